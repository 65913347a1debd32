#pragma once

#include "model/Project.h"

#include <compare>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

/// The single items of a project. Their names are read where text comes in and written where it goes out;
/// in between an item is a value.
namespace orvista {

/// Requests hold addresses in 16 bits; coils and registers have 0 to this one each.
inline constexpr std::int64_t lastModbusAddress = 65535;

enum class Kind : std::uint8_t { AddressMap, Float, Boolean, Regular, Emergency };

/// One variable, one message, or the start addresses of the four blocks, which is what an item is by itself.
struct Item {
    Kind kind = Kind::AddressMap;
    std::uint8_t index = 0; ///< within its kind, from 0; 0 for the address map

    constexpr Item() = default;
    /// \param index below the kind's count
    constexpr Item(Kind kind, std::size_t index) : kind(kind), index(static_cast<std::uint8_t>(index)) {}
    /// By kind in the order above, then by number.
    auto operator<=>(const Item&) const = default;
};

constexpr bool isMessage(Item item) {
    return item.kind == Kind::Regular || item.kind == Kind::Emergency;
}
constexpr bool isVariable(Item item) {
    return item.kind == Kind::Float || item.kind == Kind::Boolean;
}

/// How the items of a kind are named in trees, pages and files, and where they lie in the device's Modbus
/// tables.
struct KindRow {
    std::string_view word;        ///< names are the word and a number from 1: "RegVar64"
    char letter;                  ///< keys of the tree nodes are the letter and the number: "F64"
    std::size_t count;            ///< of the items, a fixed number
    std::int32_t Project::*start; ///< the first item's address
    int addressesPerItem;         ///< a float takes two registers, everything else one coil
    std::string_view treeWord;    ///< in the trees names are this word and the number: "Regular12"
};
/// Of variables or messages.
/// \throws std::out_of_range for the address map
const KindRow& rowOf(Kind kind);

/// "STDMSG12", "ALTMSG2", "RegVar3", "CoilVar3" or "address map".
std::string nameOf(Item item);
/// The item of that name, ASCII case folded and leading zeros allowed ("address map" in this case only);
/// nothing when it names none.
std::optional<Item> itemNamed(std::string_view name);
/// The same, also as the trees write it: "Regular3", "Emergency2".
std::optional<Item> itemWritten(std::string_view name);
/// As itemNamed(), where the item must be a message, or a variable.
std::optional<Item> messageNamed(std::string_view name);
std::optional<Item> variableNamed(std::string_view name);
/// Whether a name is the kind's word and any number, be there such an item or not.
bool isNumbered(std::string_view name, Kind kind);
/// "STDMSG1 to STDMSG40"
std::string namesOf(Kind kind);
/// What is said of a text that names none of these.
std::string notAMessage(std::string_view text);
std::string notAVariable(std::string_view text);

/// Of a variable or message, as the trees write it: "Regular12".
std::string treeNameOf(Item item);
/// The key of the item's node in the trees: "F64"; empty for the address map, which has none.
std::string keyOf(Item item);
/// Nothing for the key of a group.
std::optional<Item> itemOfKey(std::string_view key);

/// Where a variable or message lies. In 64 bits: a start near the 32-bit end is shown and written as it is.
std::int64_t addressOf(const Project& project, Item item);

/// Of a message.
std::string& scriptOf(Project& project, Item message);
const std::string& scriptOf(const Project& project, Item message);

/// The regular messages by number, then the emergency messages.
std::span<const Item> allMessages();
inline constexpr std::size_t messageCount = regularMessageCount + emergencyMessageCount;
/// Where a message stands among all of them, from 0.
constexpr std::size_t messagePosition(Item message) {
    return message.index + (message.kind == Kind::Emergency ? regularMessageCount : 0);
}
/// The float variables by number, then the Boolean ones.
std::span<const Item> allVariables();
/// The address map, the variables and the messages, as above.
std::span<const Item> allItems();

} // namespace orvista
