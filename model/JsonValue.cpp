#include "model/JsonValue.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>
#include <utility>

namespace orvista {

namespace {

/// The shortest digits that read back to the same double, with a point or an exponent: it may have had a
/// fraction.
std::string numberSpelling(double number) {
    const double size = std::abs(number);
    const bool isPlain = size == 0 || (size >= 1e-4 && size < 1e15);
    std::array<char, 32> digits{};
    const auto written = std::to_chars(digits.data(), digits.data() + digits.size(), number,
                                       isPlain ? std::chars_format::fixed : std::chars_format::scientific);
    std::string text(digits.data(), written.ptr);
    if (isPlain && text.find('.') == std::string::npos)
        text += ".0";
    return text;
}

} // namespace

JsonValue::JsonValue(std::nullptr_t) {}

JsonValue::JsonValue(double number) {
    if (std::isfinite(number))
        value_ = Number{numberSpelling(number)};
}

JsonValue::JsonValue(std::string text) : value_(std::move(text)) {}

JsonValue::JsonValue(std::string_view text) : value_(std::string(text)) {}

JsonValue::JsonValue(const char* text) : value_(std::string(text)) {}

JsonValue::JsonValue(Array items) : value_(std::move(items)) {}

JsonValue::JsonValue(Object members) : value_(std::move(members)) {}

JsonValue JsonValue::numberSpelt(std::string_view spelling) {
    JsonValue value;
    value.value_ = Number{std::string(spelling)};
    return value;
}

const std::string* JsonValue::spelling() const {
    const Number* const number = std::get_if<Number>(&value_);
    return number == nullptr ? nullptr : &number->spelling;
}

std::optional<double> JsonValue::number() const {
    const std::string* const digits = spelling();
    if (digits == nullptr)
        return std::nullopt;
    try {
        return leadingNumber(*digits);
    } catch (const Overflow&) {
        const double largest = std::numeric_limits<double>::infinity();
        return digits->starts_with('-') ? -largest : largest;
    }
}

std::optional<std::int64_t> JsonValue::whole(std::int64_t lowest, std::int64_t highest) const {
    const std::string* const digits = spelling();
    if (digits == nullptr)
        return std::nullopt;
    const char* const last = digits->data() + digits->size();
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(digits->data(), last, value);
    if (error != std::errc{} || end != last || value < lowest || value > highest)
        return std::nullopt;
    return value;
}

const JsonValue* JsonValue::member(std::string_view key) const {
    const Object* const members = object();
    if (members == nullptr)
        return nullptr;
    const auto found = std::ranges::find(*members, key, &JsonMember::key);
    return found == members->end() ? nullptr : &found->value;
}

JsonValue& JsonValue::memberToSet(std::string_view key) {
    Object& members = std::get<Object>(value_);
    const auto found = std::ranges::find(members, key, &JsonMember::key);
    if (found != members.end())
        return found->value;
    members.push_back({std::string(key), JsonValue()});
    return members.back().value;
}

bool JsonValue::operator==(const JsonValue& other) const {
    return value_ == other.value_;
}

} // namespace orvista
