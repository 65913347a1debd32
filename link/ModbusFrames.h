#pragma once

#include "model/Project.h"

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

/// The test client's requests, byte for byte. Every one is a Modbus/TCP write that carries the transaction
/// identifier 0x0102 and the unit identifier 255.
namespace orvista {

using Frame = std::vector<std::uint8_t>;

/// Reads an address box: the leading number of the text, 0 where there is none, hexadecimal after "&H",
/// rounded with halves to even. The number is sent as it stands: no offset, no type digit.
/// \throws Overflow below 0 or above 65535
std::uint16_t requestAddress(std::string_view text);

/// Reads a value box the same way, rounded to the nearest single.
/// \throws Overflow beyond the range of single precision
float requestValue(std::string_view text);

/// Write Multiple Coils, one coil a message from `address` on.
Frame emergencyMessagesRequest(std::uint16_t address, const std::array<bool, emergencyMessageCount>& on);
Frame regularMessagesRequest(std::uint16_t address, const std::array<bool, regularMessageCount>& on);
/// Write Single Coil.
Frame coilRequest(std::uint16_t address, bool on);
/// Write Multiple Registers: the value's low word at `address`, its high word after it, as the device reads
/// its float variables.
Frame registerPairRequest(std::uint16_t address, float value);

} // namespace orvista
