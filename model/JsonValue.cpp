#include "model/JsonValue.h"

#include "model/Numbers.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <system_error>
#include <utility>

namespace orvista {

JsonValue::JsonValue(int whole) : value_(Number{decimalText(whole)}) {}

JsonValue::JsonValue(std::string text) : value_(std::move(text)) {}

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
