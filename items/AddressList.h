#pragma once

#include "items/MessageDigest.h"
#include "items/ProjectNotes.h"
#include "model/Item.h"
#include "model/Project.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// Where every variable and message lies in the device's Modbus tables: what a PLC programmer asks for.
namespace orvista {

/// One item. All texts are UTF-8.
struct AddressRow {
    Item item;
    std::string_view kind;  ///< "float", "boolean", "emergency" or "regular"
    std::size_t number = 0; ///< from 1
    std::string name;
    std::string_view table;    ///< "holding register" or "coil"
    std::int64_t address = 0;  ///< as it goes on the wire, from 0
    std::string addressHex;    ///< "0x007A"; empty outside 0 to 65535
    std::string reference;     ///< "40123"; empty outside 0 to 65535
    int count = 1;             ///< registers or coils
    std::string_view dataType; ///< "float32" or "bit"
    std::string_view wordOrder;
    std::string_view writeFunction; ///< function codes
    std::string usedBy;             ///< messages that show the variable, a blank between
    std::string defaultValue;
    std::string format; ///< width and precision of a float: "7.3"
    std::string text;   ///< a message's first text, a Boolean's two
    std::string note;
    ItemNote noted;
    bool isUsed = false; ///< a variable that a message shows, a message that draws something
};

inline constexpr std::size_t addressColumnCount = 19;
extern const std::array<std::string_view, addressColumnCount> addressColumns;
/// In the order of addressColumns.
std::array<std::string, addressColumnCount> addressCells(const AddressRow& row);

enum class AddressRows { All, UsedOnly };

/// Float variables, Boolean variables, emergency messages, regular messages, each by number.
std::vector<AddressRow> addressList(const Project& project, AddressRows rows = AddressRows::All);

/// Puts what is noted into the rows.
void addNotes(std::vector<AddressRow>& rows, const ProjectNotes& notes);

/// All rows, as far as the messages were read.
std::vector<AddressRow> addressList(const Project& project, const MessageDigests& messages);

} // namespace orvista
