#include "check/FixFamilies.h"
#include "model/Project.h"
#include "script/ScriptText.h"

#include <string>

namespace orvista {

std::vector<Fix> reservedLineFixes(const FixGround& ground, const Finding& finding) {
    const Place& place = finding.place;
    const std::string& script = scriptOf(ground.project, place.item);
    const ScriptText lines(script);
    const std::string caption = "Delete the line";
    if (lines.count() == 1)
        return {{caption, {{place.item, 1, 1, script.size(), nullptr, clearScript}}}};
    const std::size_t start = lines.start(place.line);
    const std::size_t length = lines.start(place.line + 1) - start;
    const bool hasEnd = lines.line(place.line).size() < length;
    if (hasEnd)
        return {{caption, {{place.item, place.line, 1, length, nullptr, {}}}}};
    // The last line takes the end of the one before along.
    const std::size_t before = place.line - 1;
    const std::size_t end = lines.start(before) + lines.line(before).size();
    return {
        {caption, {{place.item, before, lines.line(before).size() + 1, script.size() - end, nullptr, {}}}}};
}

std::vector<Fix> lostMessageFixes(const FixGround& ground, const Finding& finding) {
    const Item message = finding.place.item;
    return {
        {"Write CLEAR", {{message, 1, 1, scriptOf(ground.project, message).size(), nullptr, clearScript}}}};
}

} // namespace orvista
