#pragma once

#include "model/Numbers.h"

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace orvista {

struct JsonMember;

/// A value of JSON (RFC 8259) as people write and change it: members keep their order, numbers their
/// spelling.
class JsonValue {
public:
    using Array = std::vector<JsonValue>;
    using Object = std::vector<JsonMember>;

    /// Null.
    JsonValue() = default;
    JsonValue(std::nullptr_t);
    JsonValue(std::same_as<bool> auto value) : value_(value) {} // no pointer
    template <std::integral Whole>
    requires(!std::same_as<Whole, bool>) JsonValue(Whole whole)
        : JsonValue(numberSpelt(decimalText(whole))) {}
    /// Null for what JSON has no number for: infinity and NaN.
    JsonValue(double number);
    /// \param text UTF-8
    JsonValue(std::string text);
    JsonValue(std::string_view text);
    JsonValue(const char* text);
    JsonValue(Array items);
    JsonValue(Object members);
    /// \param spelling a number as JSON has it
    static JsonValue numberSpelt(std::string_view spelling);

    bool isNull() const { return std::holds_alternative<std::monostate>(value_); }
    // Null pointers for values of another kind.
    const bool* boolean() const { return std::get_if<bool>(&value_); }
    const std::string* spelling() const; ///< of a number
    const std::string* text() const { return std::get_if<std::string>(&value_); }
    const Array* array() const { return std::get_if<Array>(&value_); }
    const Object* object() const { return std::get_if<Object>(&value_); }
    Object* object() { return std::get_if<Object>(&value_); }

    /// Nothing for values of another kind; infinite beyond the range of a double.
    std::optional<double> number() const;
    /// A number that is spelt with digits alone, a "-" before them or not, and lies within these bounds.
    std::optional<std::int64_t> whole(std::int64_t lowest, std::int64_t highest) const;

    /// The member of that key; a null pointer where there is none, and for values of another kind.
    const JsonValue* member(std::string_view key) const;
    /// The same of an object; one that is missing is added after the others, as null.
    JsonValue& memberToSet(std::string_view key);

    bool operator==(const JsonValue& other) const;

private:
    struct Number {
        std::string spelling;
        bool operator==(const Number&) const = default;
    };

    std::variant<std::monostate, bool, Number, std::string, Array, Object> value_;
};

struct JsonMember {
    std::string key;
    JsonValue value;
    bool operator==(const JsonMember&) const = default;
};

} // namespace orvista
