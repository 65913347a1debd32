#pragma once

#include <chrono>
#include <cmath>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

/// Reading and writing of numbers, the same in every locale.
namespace orvista {

/// A value that does not fit where it is to go. `what()` is "Overflow", the text shown to the user.
class Overflow : public std::range_error {
public:
    Overflow() : std::range_error("Overflow") {}
};

/// What a blank does inside a number: in text boxes it ends the number, in device files it is skipped.
enum class InnerBlanks { EndNumber, Skipped };

/// Reads the longest leading decimal number of `text`: leading blanks, one sign, digits with at most one
/// ".", an optional e/E exponent. "inf", "nan" and "0x10" are not numbers. Returns 0 where there is none and
/// where the value is too small for a double.
/// \throws Overflow when the value is beyond the range of a double.
double leadingNumber(std::string_view text, InnerBlanks innerBlanks = InnerBlanks::EndNumber);

/// Whether a number stands at the start of `text`, as leadingNumber() reads a device file.
bool beginsWithNumber(std::string_view text);

/// Whether leadingNumber() takes the text whole, or finds it beyond the range of a double.
bool isNumber(std::string_view text);

/// Digits that are a number from `lowest` to `highest`, blanks and tabs around them apart.
std::optional<std::size_t> wholeNumber(std::string_view text, std::size_t lowest, std::size_t highest);

/// Rounds to the nearest whole number, halves to the even neighbour, whatever the rounding mode.
double roundHalfToEven(double value);

/// Rounds as roundHalfToEven and converts.
/// \throws Overflow when the rounded value does not fit `Integer`.
template <typename Integer>
Integer toWhole(double value) {
    const double rounded = roundHalfToEven(value);
    // Both bounds are powers of two (or zero), hence exact as doubles; max itself may not be.
    const double bound = std::ldexp(1.0, std::numeric_limits<Integer>::digits);
    const double lowest = std::numeric_limits<Integer>::is_signed ? -bound : 0.0;
    if (!(rounded >= lowest && rounded < bound))
        throw Overflow();
    return static_cast<Integer>(rounded);
}

/// Decimal digits without blanks, "-" before a negative value.
template <std::integral Integer>
std::string decimalText(Integer value) {
    return std::to_string(value);
}

/// Rounds to the nearest single-precision value.
/// \throws Overflow beyond their range
float nearestSingle(double value);

/// "1 row", "2 rows", "0 rows".
/// \param thing one of them; more end in "s"
std::string countedText(std::uint64_t count, std::string_view thing);

/// Four hexadecimal digits, in capitals.
std::string hexWord(std::uint16_t word);

/// The shortest digits that read back to the same double, as plain decimal: never an exponent, a digit
/// before the point, no trailing ".0" (100000, 0.5, 0.0000001), zeros where the digits end before the point
/// (1e23 is 1 and 23 zeros). Negative zero gives "0".
std::string shortestDecimalText(double value);

/// The shortest digits that read back to the same single-precision value, with an exponent where that is
/// shorter (1e+30); "inf", "nan".
std::string floatText(float value);

/// "3 s", "0.5 s"
std::string secondsText(std::chrono::milliseconds time);

} // namespace orvista
