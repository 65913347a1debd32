#include "model/Item.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <stdexcept>

namespace orvista {

namespace {

constexpr std::string_view nameOfAddressMap = "address map";

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

std::optional<Item> onlyIf(bool (*isWanted)(Item), std::optional<Item> item) {
    return item && isWanted(*item) ? item : std::nullopt;
}

std::string notOneOf(std::string_view text, const char* what, Kind one, Kind other) {
    return std::string(text) + " is not a " + what + "; there are " + namesOf(one) + " and " + namesOf(other);
}

} // namespace

const ItemKind& rowOf(Kind kind) {
    switch (kind) {
    case Kind::Float:
        return floatVariables;
    case Kind::Boolean:
        return booleanVariables;
    case Kind::Regular:
        return regularMessages;
    case Kind::Emergency:
        return emergencyMessages;
    case Kind::AddressMap:
        break;
    }
    throw std::out_of_range("the address map lies nowhere");
}

std::string nameOf(Item item) {
    return item.kind == Kind::AddressMap ? std::string(nameOfAddressMap) : rowOf(item.kind).name(item.index);
}

std::optional<Item> itemNamed(std::string_view name) {
    for (const Kind kind : kinds)
        if (const auto index = rowOf(kind).indexOfName(name))
            return Item(kind, *index);
    return name == nameOfAddressMap ? std::optional(Item()) : std::nullopt;
}

std::optional<Item> itemWritten(std::string_view name) {
    if (const auto item = itemNamed(name))
        return item;
    for (const Kind kind : kinds)
        if (const auto index = rowOf(kind).indexOfTreeName(name))
            return Item(kind, *index);
    return std::nullopt;
}

std::optional<Item> messageNamed(std::string_view name) {
    return onlyIf(&isMessage, itemNamed(name));
}

std::optional<Item> variableNamed(std::string_view name) {
    return onlyIf(&isVariable, itemNamed(name));
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

std::string keyOf(Item item) {
    return item.kind == Kind::AddressMap ? std::string() : rowOf(item.kind).key(item.index);
}

std::optional<Item> itemOfKey(std::string_view key) {
    for (const Kind kind : kinds)
        if (const auto index = rowOf(kind).indexOfKey(key))
            return Item(kind, *index);
    return std::nullopt;
}

std::int64_t addressOf(const Project& project, Item item) {
    return rowOf(item.kind).address(project, item.index);
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
