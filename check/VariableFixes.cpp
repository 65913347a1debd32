#include "check/FixFamilies.h"
#include "display/DisplayValues.h"
#include "display/LiveField.h"
#include "model/Numbers.h"
#include "model/Text.h"
#include "model/VariableEditing.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

namespace orvista {

namespace {

/// Of the numbers of a list that which is nearest to one.
template <typename Choices>
std::string nearestOf(const Choices& choices, int number) {
    return *std::ranges::min_element(choices, {}, [number](const char* choice) {
        const int allowed = choice[0] - '0'; // one digit each
        return std::max(allowed, number) - std::min(allowed, number);
    });
}

/// Where the text is not that already, blanks aside.
void addText(const FixGround& ground, Item variable, std::string_view name, std::string text, Fix& fix) {
    const Field* const field = fieldNamed(variable.kind, name);
    if (trimBlanks(textOf(ground.project, variable, *field)) == text)
        return;
    fix.caption += (fix.caption.empty() ? "Set the " : " and the ") + std::string(name) + " to " + text;
    fix.edits.push_back({variable, 0, 0, 0, field, std::move(text)});
}

} // namespace

std::vector<Fix> formatFixes(const FixGround& ground, const Finding& finding) {
    const Item variable = finding.place.item;
    const FloatFormat shown = ground.formats.floats[variable.index];
    const std::string width = nearestOf(widthChoices, shown.width);
    Fix fix;
    addText(ground, variable, "width", width, fix);
    addText(ground, variable, "precision",
            precisionForWidth(width, nearestOf(precisionChoices, shown.precision)), fix);
    return {fix};
}

std::vector<Fix> defaultFixes(const FixGround& ground, const Finding& finding) {
    const Item variable = finding.place.item;
    const std::string name = "default";
    const std::string before = textOf(ground.project, variable, *fieldNamed(variable.kind, name));
    try {
        const std::string readAs = normalisedDefault(before);
        const std::string number =
            variable.kind == Kind::Float
                ? readAs
                : decimalText(int{defaultBoolean(ground.project.CoilVar[variable.index])});
        Fix fix;
        addText(ground, variable, name, number, fix);
        fix.isSure = isNumber(trimBlanks(before)) && readAs == number;
        return {fix};
    } catch (const Overflow&) {
        return {};
    }
}

} // namespace orvista
