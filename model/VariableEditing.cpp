#include "model/VariableEditing.h"

#include "model/Numbers.h"

#include <algorithm>

namespace orvista {

namespace {

constexpr std::size_t unknownWidthPosition = 4;
constexpr std::size_t unknownPrecisionPosition = 2;
constexpr std::size_t unknownBooleanDefaultPosition = 0;

template <std::size_t count>
std::size_t positionIn(const std::array<const char*, count>& choices, std::string_view text,
                       std::size_t unknown) {
    const auto found = std::find(choices.begin(), choices.end(), text);
    return found == choices.end() ? unknown : static_cast<std::size_t>(found - choices.begin());
}

} // namespace

std::size_t widthPosition(std::string_view width) {
    return positionIn(widthChoices, width, unknownWidthPosition);
}

std::size_t precisionPosition(std::string_view precision) {
    return positionIn(precisionChoices, precision, unknownPrecisionPosition);
}

std::size_t booleanDefaultPosition(std::string_view defaultValue) {
    return positionIn(booleanDefaultChoices, defaultValue, unknownBooleanDefaultPosition);
}

std::string precisionForWidth(std::string_view width, std::string_view precision) {
    if (leadingNumber(width) == 2)
        return "0";
    if (leadingNumber(width) == 8 && leadingNumber(precision) == 0)
        return "1";
    return std::string(precision);
}

std::string normalisedDefault(std::string_view typed) {
    return shortestDecimalText(leadingNumber(typed));
}

} // namespace orvista
