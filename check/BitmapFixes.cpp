#include "check/FixFamilies.h"
#include "model/Quotation.h"
#include "model/Windows1252.h"
#include "script/ScriptText.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace orvista {

namespace {

constexpr std::size_t mostNames = 4;

/// What two names have in common that differ in ending, case or blanks only.
std::string core(std::string_view name) {
    std::string core(name.substr(0, name.rfind('.')));
    std::erase(core, ' ');
    std::ranges::transform(core, core.begin(), [](char letter) {
        return static_cast<char>(lowerWindows1252(static_cast<unsigned char>(letter)));
    });
    return core;
}

} // namespace

std::vector<Fix> bitmapNameFixes(const FixGround& ground, const Finding& finding) {
    const Place& place = finding.place;
    const ScriptText lines(scriptOf(ground.project, place.item));
    const std::string wanted = core(lines.line(place.line).substr(place.column - 1, place.length));
    std::vector<Fix> fixes;
    if (wanted.empty())
        return fixes;
    for (const std::string& name : ground.bitmaps.names()) {
        if (core(name) != wanted)
            continue;
        fixes.push_back({"Write " + deviceQuotation(name),
                         {{place.item, place.line, place.column, place.length, nullptr, name}}});
        if (fixes.size() == mostNames)
            break;
    }
    return fixes;
}

} // namespace orvista
