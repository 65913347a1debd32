#pragma once

#include "model/Project.h"
#include "simulator/DeviceMemory.h"

#include <string>
#include <vector>

namespace orvista {

enum class MemoryKind { Coil, Register };

/// A coil that is on or a register that is not 0, for people.
struct MemoryItem {
    MemoryKind kind;
    std::int64_t address;
    std::string name;  ///< "STDMSG3", "RegVar1", or empty for what the address map does not name
    std::string value; ///< "on", a number, or the register's four hexadecimal digits
    bool operator==(const MemoryItem&) const = default;
};

/// Everything that is on, coils before registers, by address. A float takes one item for its two registers.
/// At most 1000 items.
std::vector<MemoryItem> itemsOn(const Project& project, const DeviceMemory& memory);

} // namespace orvista
