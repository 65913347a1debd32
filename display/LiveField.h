#pragma once

#include "display/DisplayValues.h"

#include <string>

/// The texts of live fields. Every field keeps its length whatever its value, so that it never leaves or
/// covers dots of its neighbours.
namespace orvista {

/// How a float is shown: `width` characters (1 to 40) with `precision` decimals (0 to 16).
struct FloatFormat {
    int width = 7;
    int precision = 3;
    bool operator==(const FloatFormat&) const = default;
};

/// Reads the two texts of the variable as lenient numbers. Beyond the range the nearest end counts, but a
/// width below 1 (hence also a text without a number) is the default width.
FloatFormat floatFormat(const FloatVariable& variable);

/// Right-aligned plain decimal, never with an exponent; what rounds to zero has no sign. A value that does
/// not fit, and infinity, fill the field with '*'; not-a-number fills it with '-'.
std::string floatFieldText(float value, FloatFormat format);

/// How a Boolean is shown.
struct BooleanTexts {
    std::string on;
    std::string off;
    bool operator==(const BooleanTexts&) const = default;
};

/// Left-aligned, with blanks up to the longer of the two texts.
std::string booleanFieldText(bool value, const BooleanTexts& texts);

inline constexpr int timeFieldLength = 8;
inline constexpr int dateFieldLength = 10;
/// "hh:mm:ss"; every number is taken modulo 100.
std::string timeFieldText(const LocalTime& time);
/// "dd.mm.yyyy"; day and month modulo 100, the year modulo 10000.
std::string dateFieldText(const LocalTime& time);

} // namespace orvista
