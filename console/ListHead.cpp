#include "console/ListHead.h"

#include "compare/DisplayContents.h"
#include "console/CommandFailure.h"
#include "console/Release.h"

#include <system_error>

namespace orvista::console {

AddressHead listHead(const Project& project, const ProjectNotes& notes, UtcMoment moment) {
    try {
        return {.fingerprint = fingerprint(DisplayContents::ofProject(project)),
                .time = utcText(moment),
                .display = notes.displayName,
                .release = std::string(programRelease)};
    } catch (const std::system_error& failure) {
        throw CommandFailure(ExitStatus::Unusable, failure.what());
    }
}

} // namespace orvista::console
