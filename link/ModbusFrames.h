#pragma once

#include "model/Project.h"

#include <array>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

/// Requests to the device, byte for byte. Every one is a Modbus/TCP request that carries the transaction
/// identifier 0x0102 and the unit identifier 255.
namespace orvista {

using Frame = std::vector<std::uint8_t>;

enum class FunctionCode : std::uint8_t {
    ReadCoils = 0x01,
    ReadHoldingRegisters = 0x03,
    WriteSingleCoil = 0x05,
    WriteMultipleCoils = 0x0F,
    WriteMultipleRegisters = 0x10
};

/// What stands before the function code: transaction, protocol and length (2 bytes each), unit.
inline constexpr std::size_t frameHeaderSize = 7;
/// These of them do not belong to what the length counts.
inline constexpr std::size_t uncountedHeaderSize = 6;

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

/// The protocol's limit for a request.
inline constexpr std::size_t mostRegistersWritten = 123;
/// Write Multiple Registers, as they are.
/// \param words 1 to mostRegistersWritten
Frame registersRequest(std::uint16_t address, std::span<const std::uint16_t> words);

/// \param count 1 to 2000
Frame readCoilsRequest(std::uint16_t address, std::uint16_t count);
/// \param count 1 to 125
Frame readRegistersRequest(std::uint16_t address, std::uint16_t count);

} // namespace orvista
