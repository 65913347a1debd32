#pragma once

#include "model/Project.h"

#include <string>
#include <string_view>
#include <variant>
#include <vector>

/// The single items of a project as values: what is compared, copied, undone.
namespace orvista {

/// How the address map is named where items are.
inline constexpr const char* addressMapName = "address map";

/// The start addresses of the four blocks.
struct AddressMap {
    std::int32_t AnalogInput = 0;
    std::int32_t DigitalInput = 0;
    std::int32_t AlertMessage = 0;
    std::int32_t RegularMessage = 0;
    bool operator==(const AddressMap&) const = default;
};

/// What an item holds: the script of a message (device bytes), a variable's record, or the addresses.
using ItemValue = std::variant<std::string, FloatVariable, BooleanVariable, AddressMap>;

/// An item and what it holds, or is to hold.
struct ItemState {
    std::string item; ///< "STDMSG12", "ALTMSG2", "RegVar3", "CoilVar3" or addressMapName
    ItemValue value;
    bool operator==(const ItemState&) const = default;
};

/// What the item of that name holds now. Names are taken in any ASCII case; the state has the item's own.
/// \throws std::out_of_range when there is no item of that name
ItemState itemState(const Project& project, std::string_view item);

/// The same of several items.
std::vector<ItemState> itemStates(const Project& project, const std::vector<std::string>& items);

/// Gives one item its value and changes nothing else. A variable keeps the name of its place, whatever the
/// value's name is.
/// \throws std::out_of_range when there is no item of that name
/// \throws std::bad_variant_access when the value is of another kind than the item
void setItem(Project& project, const ItemState& state);

/// Where the project holds the script of the message of that name; null when it names no message.
std::string* scriptNamed(Project& project, std::string_view message);

} // namespace orvista
