#pragma once

#include "model/Project.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace orvista {

/// Requests hold addresses in 16 bits; coils and registers have 0 to this one each.
inline constexpr std::int64_t lastModbusAddress = 65535;

/// A kind of item that is known by a word and a number: how its items are named in trees, pages and files,
/// and where they lie in the device's Modbus tables. Indices count from 0, the numbers in names from 1.
struct ItemKind {
    std::string_view word;        ///< names are the word and the number: "RegVar64"
    char letter;                  ///< keys of the tree nodes are the letter and the number: "F64"
    std::size_t count;            ///< of the items, a fixed number
    std::int32_t Project::*start; ///< the first item's address
    int addressesPerItem;         ///< a float takes two registers, everything else one coil
    std::string_view treeWord;    ///< in the trees names are this word and the number: "Regular12"

    std::string name(std::size_t index) const;
    std::string key(std::size_t index) const;
    std::string treeName(std::size_t index) const;
    /// The index of a name, ASCII case folded and leading zeros allowed; nothing when it names no item.
    std::optional<std::size_t> indexOfName(std::string_view name) const;
    /// The same for a name as the trees write it.
    std::optional<std::size_t> indexOfTreeName(std::string_view name) const;
    /// The same for a key, whose letter counts in its own case only.
    std::optional<std::size_t> indexOfKey(std::string_view key) const;
    /// In 64 bits: a start near the 32-bit end is shown and written as it is.
    std::int64_t address(const Project& project, std::size_t index) const;
};

inline constexpr ItemKind floatVariables{"RegVar", 'F',     floatVariableCount, &Project::AnalogInput,
                                         2,        "RegVar"};
inline constexpr ItemKind booleanVariables{"CoilVar", 'B',      booleanVariableCount, &Project::DigitalInput,
                                           1,         "CoilVar"};
inline constexpr ItemKind emergencyMessages{"ALTMSG",   'E', emergencyMessageCount, &Project::AlertMessage, 1,
                                            "Emergency"};
inline constexpr ItemKind regularMessages{"STDMSG", 'R',      regularMessageCount, &Project::RegularMessage,
                                          1,        "Regular"};

} // namespace orvista
