#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace orvista {

/// The coils and holding registers that a master reads and writes: addresses 0 to 65535 each.
struct DeviceMemory {
    static constexpr std::size_t size = 65536;

    std::vector<std::uint8_t> coils = std::vector<std::uint8_t>(size); ///< 0 or 1 each
    std::vector<std::uint16_t> registers = std::vector<std::uint16_t>(size);

    /// Addresses outside the memory are off: an address map may point anywhere.
    bool coil(std::int64_t address) const;
    void setCoil(std::int64_t address, bool on);
    /// The float in two registers, the low word at the lower address; 0 outside the memory.
    float floatAt(std::int64_t address) const;
    void setFloat(std::int64_t address, float value);
};

} // namespace orvista
