#include "check/PartFixing.h"

#include "model/Lines.h"
#include "script/ScriptCommands.h"
#include "script/ScriptText.h"
#include "script/ScriptWords.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <utility>
#include <variant>

namespace orvista {

namespace {

Project withoutMessages(Project project) {
    project.STDMSG.fill({});
    project.ALTMSG.fill({});
    return project;
}

bool isClear(std::string_view line) {
    ScriptWords words(line);
    return line.find_first_not_of(' ') != std::string_view::npos &&
           std::holds_alternative<ClearPage>(scriptCommand(1, words));
}

/// The first begins where the script does and holds the first CLEAR, the others begin with one.
std::vector<std::string_view> partsOfScript(std::string_view script) {
    const ScriptText lines(script);
    std::vector<std::string_view> parts;
    std::size_t start = 0;
    bool hasClear = false;
    for (std::size_t number = 1; number <= lines.count(); ++number) {
        if (!isClear(lines.line(number).substr(lines.skipped(number))) || !std::exchange(hasClear, true))
            continue;
        parts.push_back(script.substr(start, lines.start(number) - start));
        start = lines.start(number);
    }
    parts.push_back(script.substr(start));
    return parts;
}

bool endsLine(std::string_view script) {
    return !script.empty() && lineEnd.find(script.back()) != std::string_view::npos;
}

/// Whether the part alone tells what is wrong on its pages.
bool tellsInParts(const Findings& findings) {
    return findings.notListed() == 0 && findings.byCode[static_cast<std::size_t>(Code::ReservedLine)] == 0 &&
           findings.byCode[static_cast<std::size_t>(Code::LostMessage)] == 0;
}

/// Whether a fix leaves all but the part as it is, and the CLEAR that it begins with.
bool staysWithin(const Fix& fix, Item message, bool isFirst) {
    return std::ranges::all_of(fix.edits, [&](const FixEdit& edit) {
        return edit.item == message && edit.field == nullptr && (isFirst || edit.line > 1);
    });
}

std::vector<Finding> moved(std::vector<Finding> list, std::size_t lines) {
    for (Finding& finding : list)
        finding.place.line += lines;
    return list;
}

} // namespace

PartFixing::PartFixing(const Project& project, const BitmapProvider& bitmaps, int columns)
    : alone_(withoutMessages(project), bitmaps, columns) {
    alone_.goesByParts_ = false;
}

std::vector<PartFixing::Part>& PartFixing::partsOf(Item message, std::string_view script) {
    const auto [known, isNew] = parts_.try_emplace(message);
    if (!isNew)
        return known->second;
    for (const std::string_view part : partsOfScript(script)) {
        alone_.take(message, part);
        known->second.push_back({part.size(), ScriptText(part).count(), alone_.checkedOf(message)});
    }
    return known->second;
}

PartFixing::Spot PartFixing::spotOf(const std::vector<Part>& parts, std::size_t line) {
    Spot spot;
    while (line > spot.linesBefore + parts[spot.part].lines) {
        spot.bytesBefore += parts[spot.part].bytes;
        spot.linesBefore += parts[spot.part].lines;
        ++spot.part;
    }
    return spot;
}

void PartFixing::replace(Findings& findings, const Spot& spot, const Part& before, const Part& after) {
    const auto lineOf = [](const Finding& finding) { return finding.place.line; };
    auto& list = findings.list;
    const std::size_t last = spot.linesBefore + before.lines;
    const auto first = std::ranges::upper_bound(list, spot.linesBefore, {}, lineOf);
    const auto end = std::ranges::upper_bound(list, last, {}, lineOf);
    for (auto later = end; later != list.end(); ++later)
        later->place.line += after.lines - before.lines;
    const auto start = list.erase(first, end);
    std::vector<Finding> found = moved(after.checked.findings.list, spot.linesBefore);
    list.insert(start, std::make_move_iterator(found.begin()), std::make_move_iterator(found.end()));
    findings.counts += after.checked.findings.counts;
    findings.counts -= before.checked.findings.counts;
    for (std::size_t code = 0; code < findings.byCode.size(); ++code)
        findings.byCode[code] += after.checked.findings.byCode[code] - before.checked.findings.byCode[code];
}

PartFixing::Tried PartFixing::mend(const Finding& finding, std::string_view script, CheckedMessage& found,
                                   const std::function<bool(const Fix&)>& mayBe) {
    const Item message = finding.place.item;
    if (!tellsInParts(found.findings))
        return {};
    std::vector<Part>& parts = partsOf(message, script);
    if (parts.size() == 1)
        return {};
    const Spot spot = spotOf(parts, finding.place.line);
    Part& part = parts[spot.part];
    alone_.take(message, script.substr(spot.bytesBefore, part.bytes), part.checked);
    bool staysIn = true;
    Finding inPart = finding;
    inPart.place.line -= spot.linesBefore;
    auto done = alone_.mend(inPart, [&](const Fix& fix) {
        if (!staysIn || !mayBe(fix))
            return false;
        staysIn = staysWithin(fix, message, spot.part == 0);
        return staysIn;
    });
    if (!done)
        return {staysIn, std::nullopt};
    const std::string& mended = scriptOf(alone_.project(), message);
    if (!endsLine(mended) && spot.part + 1 < parts.size())
        return {};
    Part after{mended.size(), ScriptText(mended).count(), alone_.checkedOf(message)};
    replace(found.findings, spot, part, after);
    found.variables |= after.checked.variables;
    part = std::move(after);
    for (FixEdit& edit : done->fix.edits)
        edit.line += spot.linesBefore;
    for (Change& change : done->changes)
        change.at += spot.bytesBefore;
    return {true, std::move(done)};
}

} // namespace orvista
