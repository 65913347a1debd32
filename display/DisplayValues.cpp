#include "display/DisplayValues.h"

#include "model/Numbers.h"
#include "model/Text.h"

#include <cmath>
#include <limits>

namespace orvista {

namespace {

double defaultNumber(std::string_view text) {
    try {
        return leadingNumber(text);
    } catch (const Overflow&) {
        const double infinity = std::numeric_limits<double>::infinity();
        return trimLeadingBlanks(text).starts_with('-') ? -infinity : infinity;
    }
}

float narrowed(double value) {
    if (std::fabs(value) > static_cast<double>(std::numeric_limits<float>::max()))
        return std::copysign(std::numeric_limits<float>::infinity(), value < 0.0 ? -1.0F : 1.0F);
    return static_cast<float>(value);
}

} // namespace

float defaultFloat(const FloatVariable& variable) {
    return narrowed(defaultNumber(variable.defaultValue));
}

bool defaultBoolean(const BooleanVariable& variable) {
    return defaultNumber(variable.defaultValue) != 0.0;
}

DisplayValues defaultValues(const Project& project) {
    DisplayValues values;
    for (std::size_t i = 0; i < floatVariableCount; ++i)
        values.floats[i] = defaultFloat(project.RegVar[i]);
    for (std::size_t i = 0; i < booleanVariableCount; ++i)
        values.booleans[i] = defaultBoolean(project.CoilVar[i]);
    return values;
}

} // namespace orvista
