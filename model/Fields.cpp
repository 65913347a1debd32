#include "model/Fields.h"

#include "model/Lines.h"
#include "model/Numbers.h"
#include "model/Quotation.h"
#include "model/Text.h"
#include "model/Windows1252.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <optional>
#include <stdexcept>
#include <type_traits>

namespace orvista {

namespace {

using Rule = Field::Rule;
using Cell = std::variant<std::string, CellFault>;

constexpr Field address(std::string_view name, std::int32_t Project::*start, bool isRead = true) {
    using Limits = std::numeric_limits<std::int32_t>;
    return {name, Rule::Whole, start, Limits::min(), Limits::max(), isRead};
}

// What the device shows of widths and precisions, as the variable editors offer it.
constexpr std::array floatFields{Field{"default", Rule::Number, &FloatVariable::defaultValue},
                                 Field{"width", Rule::Whole, &FloatVariable::width, 2, 8},
                                 Field{"precision", Rule::Whole, &FloatVariable::precision, 0, 3}};
constexpr std::array booleanFields{Field{"default", Rule::Switch, &BooleanVariable::defaultValue},
                                   Field{"on", Rule::Line, &BooleanVariable::onText},
                                   Field{"off", Rule::Line, &BooleanVariable::offText}};
constexpr std::array messageFields{Field{"script", Rule::Script, {}}};
// No file of the display names the start of the regular messages: it follows the emergency messages.
constexpr std::array addressFields{address("AnalogInput", &Project::AnalogInput),
                                   address("DigitalInput", &Project::DigitalInput),
                                   address("AlertMessage", &Project::AlertMessage),
                                   address("RegularMessage", &Project::RegularMessage, false)};

/// Calls `visit` with the string or number in which the project keeps the field.
template <typename AnyProject, typename Visit>
decltype(auto) visitStored(AnyProject& project, Item item, const Field& field, Visit&& visit) {
    if (const auto* const text = std::get_if<std::string FloatVariable::*>(&field.member))
        return visit(project.RegVar.at(item.index).**text);
    if (const auto* const text = std::get_if<std::string BooleanVariable::*>(&field.member))
        return visit(project.CoilVar.at(item.index).**text);
    if (const auto* const start = std::get_if<std::int32_t Project::*>(&field.member))
        return visit(project.**start);
    return visit(scriptOf(project, item));
}

template <typename Integer>
std::optional<Integer> wholeDigits(std::string_view text) {
    Integer number = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isWhole = read.ec == std::errc() && read.ptr == text.data() + text.size();
    return isWhole ? std::optional(number) : std::nullopt;
}

/// The value of a text that is a number as a whole.
std::optional<double> numberOf(std::string_view text) {
    if (!isNumber(text))
        return std::nullopt;
    try {
        return leadingNumber(text);
    } catch (const Overflow&) {
        return std::nullopt;
    }
}

bool isNumeric(Rule rule) {
    return rule == Rule::Number || rule == Rule::Whole || rule == Rule::Switch;
}

/// What a new project has there.
std::string freshText(const Field& field) {
    static const Project fresh;
    return visitStored(fresh, {Kind::Regular, 0}, field, [](const auto& stored) -> std::string {
        if constexpr (std::is_same_v<decltype(stored), const std::string&>)
            return stored;
        else
            return decimalText(stored);
    });
}

CellFault fault(std::string_view cell, std::string_view what) {
    return {quotation(cell).append(" is not ").append(what)};
}

Cell deviceCell(const Field& field, std::string_view utf8) {
    const auto bytes = windows1252FromUtf8(utf8);
    if (!bytes)
        return fault(foreignCharacter(utf8), "a character of the display");
    if (field.rule == Rule::Script)
        return bytes->empty() ? freshText(field) : withWholeLineEnds(*bytes);
    if (bytes->find_first_of(lineEnd) != std::string::npos)
        return CellFault{"the text is one line"};
    return *bytes;
}

Cell wholeCell(const Field& field, std::string_view cell) {
    const auto number = wholeDigits<std::int64_t>(cell);
    if (!number || *number < field.lowest || *number > field.highest)
        return fault(cell,
                     "a number from " + decimalText(field.lowest) + " to " + decimalText(field.highest));
    return decimalText(*number);
}

Cell switchCell(std::string_view cell) {
    const auto number = numberOf(cell);
    if (number != 0.0 && number != 1.0)
        return fault(cell, "0 or 1");
    return *number == 0.0 ? "0" : "1";
}

} // namespace

std::span<const Field> fieldsOf(Kind kind) {
    switch (kind) {
    case Kind::AddressMap:
        return addressFields;
    case Kind::Float:
        return floatFields;
    case Kind::Boolean:
        return booleanFields;
    case Kind::Regular:
    case Kind::Emergency:
        break;
    }
    return messageFields;
}

const Field* fieldNamed(Kind kind, std::string_view name) {
    const auto fields = fieldsOf(kind);
    const auto found = std::ranges::find(fields, name, &Field::name);
    return found == fields.end() ? nullptr : &*found;
}

const Field& scriptField() {
    return messageFields.front();
}

std::string textOf(const Project& project, Item item, const Field& field) {
    return visitStored(project, item, field, [](const auto& stored) -> std::string {
        if constexpr (std::is_same_v<decltype(stored), const std::string&>)
            return stored;
        else
            return decimalText(stored);
    });
}

std::vector<std::string> textsOf(const Project& project, Item item) {
    std::vector<std::string> texts;
    for (const Field& field : fieldsOf(item.kind))
        texts.push_back(textOf(project, item, field));
    return texts;
}

bool holdSame(const Project& one, const Project& other, Item item, const Field& field) {
    return visitStored(one, item, field, [&](const auto& stored) {
        return visitStored(other, item, field, [&stored](const auto& others) {
            if constexpr (std::is_same_v<decltype(stored), decltype(others)>)
                return stored == others;
            else
                return false; // a field has one type
        });
    });
}

bool setText(Project& project, Item item, const Field& field, std::string_view text) {
    return visitStored(project, item, field, [text](auto& stored) {
        if constexpr (std::is_same_v<decltype(stored), std::string&>) {
            stored = text;
            return true;
        } else {
            const auto start = wholeDigits<std::int32_t>(text);
            stored = start.value_or(stored);
            return start.has_value();
        }
    });
}

void replaceText(Project& project, Item item, const Field& field, std::size_t at, std::string_view part,
                 std::string_view by) {
    visitStored(project, item, field, [&](auto& stored) {
        if constexpr (std::is_same_v<decltype(stored), std::string&>)
            stored.replace(std::min(at, stored.size()), part.size(), by);
        else if (!setText(project, item, field, by))
            throw std::invalid_argument("no address: " + std::string(by));
    });
}

Cell cellText(const Field& field, std::string_view utf8) {
    if (!isNumeric(field.rule))
        return deviceCell(field, utf8);
    const std::string_view cell = trimBlanksAndTabs(utf8);
    if (cell.empty())
        return freshText(field);
    if (field.rule == Rule::Whole)
        return wholeCell(field, cell);
    if (field.rule == Rule::Switch)
        return switchCell(cell);
    return numberOf(cell) ? Cell(std::string(cell)) : fault(cell, "a number");
}

bool isEquivalent(const Field& field, std::string_view utf8, std::string_view stored) {
    if (windows1252FromUtf8(utf8) == stored)
        return true;
    const auto number = isNumeric(field.rule) ? numberOf(trimBlanksAndTabs(utf8)) : std::nullopt;
    return number && number == numberOf(trimBlanks(stored));
}

} // namespace orvista
