#include "tests/fuzz/ReaderRun.h"
#include "tests/support/StoredBitmaps.h"

#include "check/ProjectCheck.h"
#include "display/PageFit.h"
#include "model/Lines.h"
#include "script/ScriptInterpreter.h"

#include <algorithm>
#include <functional>
#include <utility>
#include <vector>

namespace {

using namespace orvista;

/// Any bytes can be the address map, the variables and the scripts alike.
Project projectOf(std::string_view bytes) {
    Project project;
    for (const auto read : {ConfigModule::readModbusAdr, ConfigModule::readIlmVar, ConfigModule::readStdMsg})
        testing::readBytes(bytes, project, read);
    project.STDMSG[39] = bytes;
    project.RegVar[7].defaultValue = bytes.substr(0, bytes.find('\n'));
    return project;
}

std::pair<std::size_t, std::size_t> where(const Finding& finding) {
    return {finding.place.line, finding.place.column};
}

void requireInOrder(const Findings& findings) {
    testing::require(findings.list.size() <= maximumFindings);
    testing::require(findings.list.size() == std::min(maximumFindings, findings.counts.total()));
    for (std::size_t i = 0; i < findings.list.size(); ++i) {
        const Finding& finding = findings.list[i];
        testing::require(!finding.text.empty());
        testing::require((finding.place.line == 0) == (finding.place.column == 0));
        if (i > 0 && findings.list[i - 1].place.item == finding.place.item)
            testing::require(where(findings.list[i - 1]) <= where(finding));
    }
}

/// What is found lies within its line.
void requireWithin(const Findings& findings, std::string_view script) {
    std::vector<std::size_t> lengths;
    MemorySource source(script);
    LineReader lines(source);
    for (std::string_view line; lines.next(line);)
        lengths.push_back(line.size());
    if (script.starts_with(utf8ByteOrderMark) && !lengths.empty())
        lengths.front() += utf8ByteOrderMark.size(); // which the reader leaves out
    for (const Finding& finding : findings.list) {
        const Place& place = finding.place;
        testing::require(place.line == 0 || place.column - 1 + place.length <= lengths.at(place.line - 1));
    }
}

/// One input of so many, told by its bytes, is checked from scratch: nearly all of that is looking at items
/// that no input has touched.
constexpr std::size_t freshShare = 16;

bool isChosen(std::string_view bytes) {
    return std::hash<std::string_view>()(bytes) % freshShare == 0;
}

} // namespace

/// What is found is in order and bounded, a check made again finds the same, and so does one that knows the
/// project as it was before.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes = testing::inputBytes(data, size);
    StoredBitmaps bitmaps;
    bitmaps.store("a.bmp", bytes);
    static const Project defaults;
    static ProjectCheck check;
    const Project project = projectOf(bytes);
    check.check(defaults, bitmaps, 24); // each input stands for itself
    const Findings findings = check.check(project, bitmaps, 24, Notes::Included);
    requireInOrder(findings);
    testing::require(check.check(project, bitmaps, 24, Notes::Included) == findings);
    testing::require(check.itemsLookedAt() == 0);
    testing::require(!isChosen(bytes) || checkProject(project, bitmaps, 24, Notes::Included) == findings);

    const Findings ofMessage = checkMessage({Kind::Regular, 0}, bytes, project, bitmaps, 512);
    requireInOrder(ofMessage);
    requireWithin(ofMessage, bytes);
    const FieldFormats formats = fieldFormats(project);
    for (const ScriptPage& page : interpretScript(bytes).pages)
        unfitCharacters({page}, {128}, formats, Passing::Ignored);
    return 0;
}
