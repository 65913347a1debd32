#include "display/LiveField.h"

#include "model/Numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace orvista {

namespace {

constexpr int maximumWidth = 40;
constexpr int maximumPrecision = 16;

/// -1 to `maximum`: everything below 0 counts as -1.
int boundedNumber(std::string_view text, int maximum) {
    try {
        return static_cast<int>(std::clamp(roundHalfToEven(leadingNumber(text)), -1.0, double(maximum)));
    } catch (const Overflow&) {
        return maximum;
    }
}

/// The last `count` digits of `number`, with leading zeros.
std::string paddedDigits(int number, std::size_t count) {
    std::string text(count, '0');
    auto rest = static_cast<unsigned>(std::max(number, 0));
    for (auto digit = text.rbegin(); digit != text.rend(); ++digit, rest /= 10)
        *digit = static_cast<char>('0' + rest % 10);
    return text;
}

/// Plain decimal; what rounds to zero has no sign.
std::string shownDecimal(float value, int precision) {
    // The largest float has 39 digits before the point.
    std::array<char, 64> buffer{};
    const auto written = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                       std::chars_format::fixed, precision);
    std::string text(buffer.data(), written.ptr);
    if (text.front() == '-' && text.find_first_of("123456789") == std::string::npos)
        text.erase(0, 1);
    return text;
}

} // namespace

FloatFormat floatFormat(const FloatVariable& variable) {
    FloatFormat format;
    if (const int width = boundedNumber(variable.width, maximumWidth); width >= 1)
        format.width = width;
    format.precision = std::max(boundedNumber(variable.precision, maximumPrecision), 0);
    return format;
}

std::string floatFieldText(float value, FloatFormat format) {
    const auto width = static_cast<std::size_t>(std::clamp(format.width, 1, maximumWidth));
    if (std::isnan(value))
        return std::string(width, '-');
    if (std::isinf(value))
        return std::string(width, '*');
    const std::string number = shownDecimal(value, std::clamp(format.precision, 0, maximumPrecision));
    if (number.size() > width)
        return std::string(width, '*');
    return std::string(width - number.size(), ' ') + number;
}

std::string booleanFieldText(bool value, const BooleanTexts& texts) {
    std::string text = value ? texts.on : texts.off;
    text.resize(std::max(texts.on.size(), texts.off.size()), ' ');
    return text;
}

std::string timeFieldText(const LocalTime& time) {
    return paddedDigits(time.hour, 2) + ':' + paddedDigits(time.minute, 2) + ':' +
           paddedDigits(time.second, 2);
}

std::string dateFieldText(const LocalTime& time) {
    return paddedDigits(time.day, 2) + '.' + paddedDigits(time.month, 2) + '.' + paddedDigits(time.year, 4);
}

} // namespace orvista
