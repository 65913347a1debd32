#include "display/FieldFormats.h"

#include <algorithm>

namespace orvista {

FieldFormats fieldFormats(const Project& project) {
    FieldFormats formats;
    std::ranges::transform(project.RegVar, formats.floats.begin(), floatFormat);
    std::ranges::transform(project.CoilVar, formats.booleans.begin(), [](const BooleanVariable& variable) {
        return BooleanTexts{variable.onText.substr(0, maximumBooleanText),
                            variable.offText.substr(0, maximumBooleanText)};
    });
    return formats;
}

} // namespace orvista
