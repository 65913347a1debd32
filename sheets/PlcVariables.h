#pragma once

#include "items/PlcNames.h"
#include "sheets/AddressSheet.h"

#include <array>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// The variables of a PLC program that has a value for each item of an address list. Texts are UTF-8.
namespace orvista {

struct PlcVariable {
    Item item;
    std::string name;
    bool isAddressable = true;
    std::string_view type; ///< "REAL" or "BOOL"
    std::string initial;   ///< a literal: "1.85", "TRUE"; empty where REAL cannot hold the default
    std::string text;      ///< unit, place and comment: "m; holding register 40123, ..."
};

/// What a Modbus client sends of it, one array for each block.
struct PlcBuffer {
    Kind kind;
    std::string name;
    std::size_t count;
    std::string_view type; ///< "WORD" or "BOOL"
    std::string text;
};

struct PlcVariables {
    std::vector<PlcVariable> items;
    std::array<PlcBuffer, 4> buffers;
    std::string prefix;
};

/// \param rows with their notes
/// \param names of the rows, without faults
PlcVariables plcVariables(std::span<const AddressRow> rows, const PlcNames& names, std::string_view prefix,
                          const Project& project);

} // namespace orvista
