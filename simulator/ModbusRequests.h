#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Modbus/TCP requests as bytes: where one ends, whether it is well formed and what it says in words.
namespace orvista {

/// Transaction (2 bytes), protocol (2), length (2), unit (1): what stands before the function code.
inline constexpr std::size_t modbusHeaderSize = 7;
/// The longest request the protocol allows, header included.
inline constexpr std::size_t longestModbusFrame = 260;

enum class FrameState { Incomplete, Complete, Garbage };

struct FrameStart {
    FrameState state = FrameState::Incomplete;
    std::size_t size = 0; ///< bytes of the first frame, when it is complete
    bool operator==(const FrameStart&) const = default;
};

/// Looks for the first frame in what a connection has received. Garbage is anything whose header no Modbus
/// request has: nothing after it can be told apart any more.
FrameStart firstModbusFrame(std::string_view received);

/// The eight functions that read or write coils and registers.
enum class ModbusFunction : std::uint8_t {
    ReadCoils = 0x01,
    ReadDiscreteInputs = 0x02,
    ReadHoldingRegisters = 0x03,
    ReadInputRegisters = 0x04,
    WriteSingleCoil = 0x05,
    WriteSingleRegister = 0x06,
    WriteMultipleCoils = 0x0F,
    WriteMultipleRegisters = 0x10
};

/// The fields of a request that this device knows. Values are as sent, not checked against the memory.
struct ModbusRequest {
    ModbusFunction function = ModbusFunction::ReadCoils;
    std::uint16_t address = 0;
    std::uint16_t quantity = 1; ///< coils or registers, 1 for the single writes
    std::string_view data;      ///< what is to be written, without its byte count

    /// What a writing sets at its address + `index`. \param index below `quantity`
    bool coil(std::size_t index) const;
    std::uint16_t word(std::size_t index) const;
};

/// True when the frame's function is one of the eight.
bool knowsModbusFunction(std::string_view frame);

/// Nothing when the function is unknown or the lengths inside the frame do not agree.
/// \param frame a complete frame, which must outlive the result's data
std::optional<ModbusRequest> parseModbusRequest(std::string_view frame);

/// True for a request that parseModbusRequest() knows and that is not a reading.
bool writesModbusMemory(std::string_view frame);

/// The code of an answer that is an exception.
std::optional<unsigned> modbusException(std::string_view answer);

/// One line for people, such as "Write Multiple Coils 300..319: 1, 3 on"; coils are counted from 1.
std::string describeModbusRequest(std::string_view frame);

/// "01 02 FF"
std::string hexBytes(std::string_view bytes);

} // namespace orvista
