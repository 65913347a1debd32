#include "console/ValuesOption.h"

#include "console/CommaList.h"
#include "console/CommandFailure.h"
#include "model/Files.h"
#include "model/Item.h"
#include "model/JsonReader.h"
#include "model/Numbers.h"
#include "model/Text.h"
#include "model/VariableValue.h"

#include <bit>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace orvista::console {

namespace {

constexpr std::size_t maximumReadingBytes = std::size_t{1} << 20;

[[noreturn]] void refuse(const std::string& text) {
    throw CommandFailure(ExitStatus::Unusable, text);
}

std::optional<ValueChoice> choiceNamed(std::string_view name) {
    using enum ValueChoice;
    for (const auto& [word, choice] :
         {std::pair{"default", Defaults}, {"widest", Widest}, {"smallest", Smallest}, {"stars", Stars}})
        if (equalsIgnoringCase(name, word))
            return choice;
    return std::nullopt;
}

/// \param item of that name
Item expectVariable(std::optional<Item> item, std::string_view name, const std::string& where) {
    if (!item || !isVariable(*item))
        refuse(where + ": \"" + std::string(name) + "\" is none of " + namesOf(Kind::Float) + " and " +
               namesOf(Kind::Boolean));
    return *item;
}

void assign(OwnValues& own, const std::string& assignment, const ProjectNotes& notes) {
    const std::size_t sign = assignment.find('=');
    if (sign == std::string::npos)
        refuse(
            "--values: \"" + assignment +
            "\" is neither default, widest, smallest, stars, a value such as RegVar1=-99.9 or CoilVar2=on, "
            "nor a .json file");
    const std::string_view value = std::string_view(assignment).substr(sign + 1);
    const std::string_view name = trimBlanks(std::string_view(assignment).substr(0, sign));
    const Item item = expectVariable(itemCalled(name, notes), name, assignment);
    if (item.kind == Kind::Float) {
        try {
            own.floats[item.index] = enteredFloat(value);
        } catch (const std::invalid_argument& mistake) {
            refuse(assignment + ": " + mistake.what());
        }
        return;
    }
    const auto isOn = enteredSwitch(value);
    if (!isOn)
        refuse(assignment + ": a Boolean variable is on or off");
    own.booleans[item.index] = *isOn;
}

/// A document that `orvista read --json` does not print.
struct NoReading {
    std::string why = {}; ///< where that is known
};

std::uint32_t word(const JsonValue& raw) {
    const auto value = raw.whole(0, 0xFFFF);
    if (!value)
        throw NoReading();
    return static_cast<std::uint32_t>(*value);
}

/// A number that JSON has, or the float in two words, the low one first.
std::optional<float> readFloat(const JsonValue& reading, const JsonValue& value) {
    if (const auto number = value.number())
        return nearestSingle(*number);
    const JsonValue* const raw = reading.member("raw");
    if (!value.isNull() || raw == nullptr || raw->array() == nullptr)
        throw NoReading();
    const JsonValue::Array& words = *raw->array();
    if (words.size() != 2)
        return std::nullopt;
    return std::bit_cast<float>(word(words[0]) | word(words[1]) << 16);
}

void take(OwnValues& own, const JsonValue& reading, const std::string& file) {
    const JsonValue* const name = reading.member("name");
    const JsonValue* const value = reading.member("value");
    if (name == nullptr || name->text() == nullptr || value == nullptr)
        throw NoReading();
    const Item item = expectVariable(itemNamed(*name->text()), *name->text(), file);
    if (item.kind == Kind::Float) {
        if (const auto number = readFloat(reading, *value))
            own.floats[item.index] = *number;
    } else if (!value->isNull()) { // which it is where the address map puts it beyond the addresses
        if (value->boolean() == nullptr)
            throw NoReading();
        own.booleans[item.index] = *value->boolean();
    }
}

} // namespace

OwnValues valuesOfReading(std::string_view text, const std::string& file) {
    OwnValues own;
    try {
        const JsonReading json = readJson(text);
        if (!json.fault.empty())
            throw NoReading{json.fault};
        if (!json.doubledKeys.empty())
            throw NoReading{json.doubledKeys.front()};
        const JsonValue* const values = json.value.member("values");
        if (values == nullptr || values->array() == nullptr)
            throw NoReading();
        for (const JsonValue& reading : *values->array())
            take(own, reading, file);
    } catch (const NoReading& mistake) {
        refuse(file + " is not what orvista read --json prints" +
               (mistake.why.empty() ? "" : ": " + mistake.why));
    } catch (const Overflow&) {
        refuse(file + " holds a number that is larger than a float variable can hold");
    }
    return own;
}

FieldValues namedValues(const std::string& argument, const Project& project, const ProjectNotes& notes) {
    if (const auto choice = choiceNamed(argument))
        return chosenValues(*choice, project);
    FieldValues values = chosenValues(ValueChoice::Defaults, project);
    if (!endsWithIgnoringCase(argument, ".json")) {
        OwnValues own;
        for (const std::string& assignment : betweenCommas(argument))
            assign(own, assignment, notes);
        return withOwn(values, own);
    }
    try {
        FileSource file(argument);
        const std::string bytes = bytesUpTo(file, maximumReadingBytes + 1);
        if (bytes.size() > maximumReadingBytes)
            refuse(argument + " is longer than " + decimalText(maximumReadingBytes >> 20) + " MB");
        return withOwn(values, valuesOfReading(bytes, argument));
    } catch (const std::system_error& failure) {
        refuse(argument + ": " + failure.code().message());
    }
}

} // namespace orvista::console
