#include "model/Item.h"

#include "model/Numbers.h"
#include "model/Text.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <stdexcept>

namespace orvista {

namespace {

constexpr std::string_view nameOfAddressMap = "address map";

constexpr KindRow floats{"RegVar", 'F', floatVariableCount, &Project::AnalogInput, 2, "RegVar"};
constexpr KindRow booleans{"CoilVar", 'B', booleanVariableCount, &Project::DigitalInput, 1, "CoilVar"};
constexpr KindRow regular{"STDMSG", 'R', regularMessageCount, &Project::RegularMessage, 1, "Regular"};
constexpr KindRow emergency{"ALTMSG", 'E', emergencyMessageCount, &Project::AlertMessage, 1, "Emergency"};

constexpr std::array kinds{Kind::Float, Kind::Boolean, Kind::Regular, Kind::Emergency};

constexpr std::size_t variableCount = floatVariableCount + booleanVariableCount;
constexpr std::size_t itemCount = 1 + variableCount + regularMessageCount + emergencyMessageCount;

constexpr std::array<Item, itemCount> items = [] {
    std::array<Item, itemCount> all{};
    std::size_t next = 1;
    for (std::size_t i = 0; i < floatVariableCount; ++i)
        all[next++] = {Kind::Float, i};
    for (std::size_t i = 0; i < booleanVariableCount; ++i)
        all[next++] = {Kind::Boolean, i};
    for (std::size_t i = 0; i < regularMessageCount; ++i)
        all[next++] = {Kind::Regular, i};
    for (std::size_t i = 0; i < emergencyMessageCount; ++i)
        all[next++] = {Kind::Emergency, i};
    return all;
}();

std::optional<Item> itemOfNumber(Kind kind, std::string_view digits) {
    if (!GenenalModule::IsAllDigits(digits))
        return std::nullopt;
    const std::size_t count = rowOf(kind).count;
    std::size_t number = 0;
    for (const char digit : digits)
        number = std::min(number * 10 + static_cast<std::size_t>(digit - '0'), count + 1);
    return number >= 1 && number <= count ? std::optional(Item(kind, number - 1)) : std::nullopt;
}

std::optional<Item> onlyIf(bool (*isWanted)(Item), std::optional<Item> item) {
    return item && isWanted(*item) ? item : std::nullopt;
}

std::string notOneOf(std::string_view text, const char* what, Kind one, Kind other) {
    return std::string(text) + " is not a " + what + "; there are " + namesOf(one) + " and " + namesOf(other);
}

} // namespace

const KindRow& rowOf(Kind kind) {
    switch (kind) {
    case Kind::Float:
        return floats;
    case Kind::Boolean:
        return booleans;
    case Kind::Regular:
        return regular;
    case Kind::Emergency:
        return emergency;
    case Kind::AddressMap:
        break;
    }
    throw std::out_of_range("the address map lies nowhere");
}

std::string nameOf(Item item) {
    if (item.kind == Kind::AddressMap)
        return std::string(nameOfAddressMap);
    return std::string(rowOf(item.kind).word) + decimalText(item.index + 1);
}

std::optional<Item> itemNamed(std::string_view name) {
    for (const Kind kind : kinds)
        if (const std::string_view word = rowOf(kind).word; startsWithIgnoringCase(name, word))
            return itemOfNumber(kind, name.substr(word.size()));
    return name == nameOfAddressMap ? std::optional(Item()) : std::nullopt;
}

std::optional<Item> itemWritten(std::string_view name) {
    if (const auto item = itemNamed(name))
        return item;
    for (const Kind kind : kinds)
        if (const std::string_view word = rowOf(kind).treeWord; startsWithIgnoringCase(name, word))
            return itemOfNumber(kind, name.substr(word.size()));
    return std::nullopt;
}

std::optional<Item> messageNamed(std::string_view name) {
    return onlyIf(&isMessage, itemNamed(name));
}

std::optional<Item> variableNamed(std::string_view name) {
    return onlyIf(&isVariable, itemNamed(name));
}

bool isNumbered(std::string_view name, Kind kind) {
    const std::string_view word = rowOf(kind).word;
    return startsWithIgnoringCase(name, word) && GenenalModule::IsAllDigits(name.substr(word.size()));
}

std::string namesOf(Kind kind) {
    return nameOf({kind, 0}) + " to " + nameOf({kind, rowOf(kind).count - 1});
}

std::string notAMessage(std::string_view text) {
    return notOneOf(text, "message", Kind::Regular, Kind::Emergency);
}

std::string notAVariable(std::string_view text) {
    return notOneOf(text, "variable", Kind::Float, Kind::Boolean);
}

std::string treeNameOf(Item item) {
    return std::string(rowOf(item.kind).treeWord) + decimalText(item.index + 1);
}

std::string keyOf(Item item) {
    return item.kind == Kind::AddressMap ? std::string()
                                         : rowOf(item.kind).letter + decimalText(item.index + 1);
}

std::optional<Item> itemOfKey(std::string_view key) {
    for (const Kind kind : kinds)
        if (key.starts_with(rowOf(kind).letter))
            return itemOfNumber(kind, key.substr(1));
    return std::nullopt;
}

std::int64_t addressOf(const Project& project, Item item) {
    const KindRow& row = rowOf(item.kind);
    return std::int64_t{project.*row.start} + row.addressesPerItem * std::int64_t{item.index};
}

std::string& scriptOf(Project& project, Item message) {
    return message.kind == Kind::Regular ? project.STDMSG.at(message.index)
                                         : project.ALTMSG.at(message.index);
}

const std::string& scriptOf(const Project& project, Item message) {
    return message.kind == Kind::Regular ? project.STDMSG.at(message.index)
                                         : project.ALTMSG.at(message.index);
}

std::span<const Item> allMessages() {
    return std::span(items).subspan(1 + variableCount);
}

std::span<const Item> allVariables() {
    return std::span(items).subspan(1, variableCount);
}

std::span<const Item> allItems() {
    return items;
}

} // namespace orvista
