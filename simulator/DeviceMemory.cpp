#include "simulator/DeviceMemory.h"

#include <bit>

namespace orvista {

namespace {

bool holds(std::int64_t address, std::int64_t count) {
    return address >= 0 && address + count <= static_cast<std::int64_t>(DeviceMemory::size);
}

} // namespace

bool DeviceMemory::coil(std::int64_t address) const {
    return holds(address, 1) && coils[static_cast<std::size_t>(address)] != 0;
}

void DeviceMemory::setCoil(std::int64_t address, bool on) {
    if (holds(address, 1))
        coils[static_cast<std::size_t>(address)] = on ? 1 : 0;
}

float DeviceMemory::floatAt(std::int64_t address) const {
    if (!holds(address, 2))
        return 0.0F;
    const auto first = static_cast<std::size_t>(address);
    const std::uint32_t low = registers[first];
    const std::uint32_t high = registers[first + 1];
    return std::bit_cast<float>(high << 16U | low);
}

void DeviceMemory::setFloat(std::int64_t address, float value) {
    if (!holds(address, 2))
        return;
    const auto bits = std::bit_cast<std::uint32_t>(value);
    const auto first = static_cast<std::size_t>(address);
    registers[first] = static_cast<std::uint16_t>(bits & 0xFFFFU);
    registers[first + 1] = static_cast<std::uint16_t>(bits >> 16U);
}

} // namespace orvista
