#include "model/Numbers.h"

#include "model/Text.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace orvista {

namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

std::string withoutBlanks(std::string_view text) {
    std::string rest(text);
    std::erase(rest, ' ');
    return rest;
}

/// Tells too large from too small for a number text that from_chars found out of range: the power of ten
/// of its first digit that is not zero decides.
bool isBeyondLargest(std::string_view number) {
    const auto exponentAt = number.find_first_of("eE");
    const std::string_view digits = number.substr(0, exponentAt);
    const auto point = std::min(digits.find('.'), digits.size());
    const auto firstDigit = digits.find_first_of("123456789");
    const auto power = static_cast<std::int64_t>(point) - static_cast<std::int64_t>(firstDigit);

    if (exponentAt == std::string_view::npos)
        return power > 0;
    std::string_view exponent = number.substr(exponentAt + 1);
    const bool negative = exponent.starts_with('-');
    if (negative || exponent.starts_with('+'))
        exponent.remove_prefix(1);
    std::int64_t value = 0;
    const auto parsed = std::from_chars(exponent.data(), exponent.data() + exponent.size(), value);
    // No text is long enough for its digits to make up for such an exponent.
    constexpr std::int64_t farBeyond = std::numeric_limits<std::int64_t>::max() / 2;
    if (parsed.ec == std::errc::result_out_of_range || value > farBeyond)
        return !negative;
    return power + (negative ? -value : value) > 0;
}

/// From here on the shortest digits may end before the point, and to_chars would fill up with all the digits
/// of the value next to them.
constexpr double firstBeyondDigits = 1e16;

/// Shortest digits, then zeros up to the point: 1e23 is 1 and 23 zeros.
std::string wholeDecimalText(double value) {
    std::array<char, 32> buffer{}; // a sign, 17 digits, a point and an exponent
    const auto written =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::scientific);
    const std::string_view text(buffer.data(), static_cast<std::size_t>(written.ptr - buffer.data()));
    const auto exponentAt = text.find('e');
    std::string digits(text.substr(0, exponentAt));
    std::erase(digits, '.');
    const auto signs = static_cast<std::size_t>(digits.starts_with('-'));
    const auto exponent = static_cast<std::size_t>(leadingNumber(text.substr(exponentAt + 1)));
    digits.append(signs + exponent + 1 - digits.size(), '0');
    return digits;
}

} // namespace

double leadingNumber(std::string_view text, InnerBlanks innerBlanks) {
    std::string packed;
    if (innerBlanks == InnerBlanks::Skipped)
        text = packed = withoutBlanks(text);
    text = trimLeadingBlanks(text);
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+'))
        text.remove_prefix(1);
    // from_chars also reads a second "-", "inf" and "nan".
    if (text.empty() || !(isDigit(text.front()) || text.front() == '.'))
        return 0.0;

    double value = 0.0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error == std::errc::result_out_of_range) {
        if (isBeyondLargest(text.substr(0, static_cast<std::size_t>(end - text.data()))))
            throw Overflow();
        return 0.0;
    }
    return negative ? -value : value;
}

bool beginsWithNumber(std::string_view text) {
    std::string packed = withoutBlanks(text);
    if (packed.starts_with('-') || packed.starts_with('+'))
        packed.erase(0, 1);
    const std::size_t digit = packed.starts_with('.') ? 1 : 0;
    return digit < packed.size() && isDigit(packed[digit]);
}

bool isNumber(std::string_view text) {
    text = trimLeadingBlanks(text);
    if (text.starts_with('-') || text.starts_with('+'))
        text.remove_prefix(1);
    if (text.empty() || !(isDigit(text.front()) || text.front() == '.'))
        return false;
    double value = 0.0;
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, value);
    return read.ec != std::errc::invalid_argument && read.ptr == end;
}

std::optional<std::size_t> wholeNumber(std::string_view text, std::size_t lowest, std::size_t highest) {
    text = trimBlanksAndTabs(text);
    std::size_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc{} || end != text.data() + text.size() || number < lowest || number > highest)
        return std::nullopt;
    return number;
}

double roundHalfToEven(double value) {
    const double below = std::floor(value);
    const double fraction = value - below;
    if (fraction < 0.5)
        return below;
    if (fraction > 0.5)
        return below + 1.0;
    return std::fmod(below, 2.0) == 0.0 ? below : below + 1.0;
}

float nearestSingle(double value) {
    // Half a unit in the last place above the largest single: from here on rounding gives infinity.
    constexpr double beyondSingle = 0x1.ffffffp127;
    constexpr double largestSingle = std::numeric_limits<float>::max();
    if (std::abs(value) >= beyondSingle)
        throw Overflow();
    if (std::abs(value) > largestSingle)
        return static_cast<float>(std::copysign(largestSingle, value));
    return static_cast<float>(value);
}

std::string countedText(std::uint64_t count, std::string_view thing) {
    return decimalText(count).append(" ").append(thing).append(count == 1 ? "" : "s");
}

std::string hexWord(std::uint16_t word) {
    std::string text;
    for (int shift = 12; shift >= 0; shift -= 4)
        text += "0123456789ABCDEF"[word >> shift & 0xF];
    return text;
}

std::string shortestDecimalText(double value) {
    if (value == 0.0)
        return "0";
    if (std::isfinite(value) && std::abs(value) >= firstBeyondDigits)
        return wholeDecimalText(value);
    // The longest plain form, of the smallest denormal, has 3 + 323 places and a sign.
    std::array<char, 400> digits{};
    const auto written =
        std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::fixed);
    return {digits.data(), written.ptr};
}

std::string floatText(float value) {
    std::array<char, 32> digits{};
    const auto written = std::to_chars(digits.data(), digits.data() + digits.size(), value);
    return {digits.data(), written.ptr};
}

std::string secondsText(std::chrono::milliseconds time) {
    return shortestDecimalText(static_cast<double>(time.count()) / 1000) + " s";
}

} // namespace orvista
