#pragma once

#include "simulator/DeviceMemory.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace orvista {

/// Why a request is refused: the exception codes that a device gives by itself.
enum class ModbusException : std::uint8_t {
    IllegalFunction = 1,
    IllegalDataAddress = 2,
    IllegalDataValue = 3 ///< also a request whose lengths do not agree
};

/// Performs a request on the memory, wholly or not at all, and returns the answer; empty when there is none
/// to give. There are no discrete inputs and no input registers: reading one is refused for its address.
/// \param frame one complete frame
std::string performModbusRequest(std::string_view frame, DeviceMemory& memory);

/// The answer that refuses the request. Nothing is performed.
/// \param exceptionCode 1 to 11
std::string refuseModbusRequest(std::string_view frame, unsigned exceptionCode);

} // namespace orvista
