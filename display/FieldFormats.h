#pragma once

#include "display/LiveField.h"
#include "model/Project.h"

#include <array>
#include <cstddef>

namespace orvista {

/// How the variables are shown; texts of Booleans are cut at maximumBooleanText, more than the longest panel
/// can show.
inline constexpr std::size_t maximumBooleanText = 700;
struct FieldFormats {
    std::array<FloatFormat, floatVariableCount> floats;
    std::array<BooleanTexts, booleanVariableCount> booleans;
    bool operator==(const FieldFormats&) const = default;
};
FieldFormats fieldFormats(const Project& project);

} // namespace orvista
