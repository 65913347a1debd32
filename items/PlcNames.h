#pragma once

#include "items/AddressList.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// What a PLC program calls the items of an address list: a prefix, then the label or the item's name.
namespace orvista {

/// What such a program declares beside the items, each after the prefix.
namespace plc {
inline constexpr std::string_view registers = "Registers";
inline constexpr std::string_view booleans = "Booleans";
inline constexpr std::string_view emergency = "Emergency";
inline constexpr std::string_view regular = "Regular";
inline constexpr std::string_view bits = "Bits";
inline constexpr std::string_view realBits = "RealBits";
inline constexpr std::string_view toDisplay = "ToDisplay";
inline constexpr std::string_view globals = "Globals";
} // namespace plc

/// In characters: all of the program's own names are labels after it.
inline constexpr std::size_t longestPlcPrefix = 31;

/// Why a text cannot stand before the names, to follow its quotation; empty where it can. It may be empty
/// and may end in _.
std::string plcPrefixFault(std::string_view prefix);

struct PlcNames {
    std::vector<std::string> names;  ///< of each row
    std::vector<std::string> faults; ///< by row: names that are none, and those that another has already
};
/// \param prefix without a fault
PlcNames plcNames(std::span<const AddressRow> rows, std::string_view prefix);

/// The faults as lines, the first few and how many more there are.
std::string plcFaultText(const PlcNames& names);

} // namespace orvista
