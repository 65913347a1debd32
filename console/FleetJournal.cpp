#include "console/FleetJournal.h"

#include "console/FleetLines.h"
#include "console/Release.h"
#include "link/FleetFields.h"
#include "model/JsonText.h"
#include "model/JsonValue.h"
#include "model/SystemFile.h"
#include "model/SystemPath.h"
#include "model/UtcTime.h"

#include <chrono>
#include <system_error>

namespace orvista::console {

namespace {

/// A bitmap that cannot be read any more costs only the fingerprint.
std::string fingerprintOf(const FleetTask& task, const TransferEnd& end) {
    try {
        return task.fingerprint ? task.fingerprint(end) : std::string();
    } catch (const std::system_error&) {
        return {};
    }
}

} // namespace

void FleetJournal::append(const FleetTask& task, const FleetResult& result) {
    if (path_.empty())
        return;
    const std::string line =
        jsonLine(JsonValue::Object{{"time", utcText(std::chrono::system_clock::now())},
                                   {fleetFields::name, result.name},
                                   {fleetFields::address, task.display.address.host},
                                   {"port", task.display.address.port},
                                   {"project", task.display.project},
                                   {"fingerprint", fingerprintOf(task, result.end)},
                                   {fleetFields::result, outcomeWord(result.end.outcome)},
                                   {fleetFields::reason, result.end.reason},
                                   {fleetFields::files, result.end.files},
                                   {fleetFields::seconds, inHundredths(result.seconds)},
                                   {"version", programRelease}});
    try {
        SystemFile file(systemPath(path_), SystemFile::Mode::Append);
        file.write(isCut_ ? "\n" + line : line);
        isCut_ = false;
        file.close();
    } catch (const std::system_error& failure) {
        isCut_ = true;
        if (fault_.empty())
            fault_ = path_ + ": " + failure.code().message();
    }
}

} // namespace orvista::console
