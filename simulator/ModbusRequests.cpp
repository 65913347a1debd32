#include "simulator/ModbusRequests.h"

#include "model/Numbers.h"

#include <bit>

namespace orvista {

namespace {

std::uint8_t byteAt(std::string_view bytes, std::size_t index) {
    return static_cast<std::uint8_t>(bytes[index]);
}

std::uint16_t wordAt(std::string_view bytes, std::size_t index) {
    return static_cast<std::uint16_t>(byteAt(bytes, index) << 8U | byteAt(bytes, index + 1));
}

std::string_view functionName(ModbusFunction function) {
    switch (function) {
    case ModbusFunction::ReadCoils:
        return "Read Coils";
    case ModbusFunction::ReadDiscreteInputs:
        return "Read Discrete Inputs";
    case ModbusFunction::ReadHoldingRegisters:
        return "Read Holding Registers";
    case ModbusFunction::ReadInputRegisters:
        return "Read Input Registers";
    case ModbusFunction::WriteSingleCoil:
        return "Write Single Coil";
    case ModbusFunction::WriteSingleRegister:
        return "Write Single Register";
    case ModbusFunction::WriteMultipleCoils:
        return "Write Multiple Coils";
    case ModbusFunction::WriteMultipleRegisters:
        return "Write Multiple Registers";
    default:
        return {};
    }
}

bool isSingleWrite(ModbusFunction function) {
    return function == ModbusFunction::WriteSingleCoil || function == ModbusFunction::WriteSingleRegister;
}

bool isMultipleWrite(ModbusFunction function) {
    return function == ModbusFunction::WriteMultipleCoils ||
           function == ModbusFunction::WriteMultipleRegisters;
}

std::string addressRange(const ModbusRequest& request) {
    std::string range = decimalText(request.address);
    if (request.quantity > 1)
        range += ".." + decimalText(std::int64_t{request.address} + request.quantity - 1);
    return range;
}

std::string coilsInWords(const ModbusRequest& request) {
    std::string on;
    for (std::size_t index = 0; index < request.quantity; ++index) {
        if (!request.coil(index))
            continue;
        on += (on.empty() ? "" : ", ") + decimalText(index + 1);
    }
    return on.empty() ? "all off" : on + " on";
}

float floatIn(std::string_view lowWordFirst) {
    return std::bit_cast<float>(std::uint32_t{wordAt(lowWordFirst, 2)} << 16U | wordAt(lowWordFirst, 0));
}

std::string registersInWords(const ModbusRequest& request) {
    std::string words;
    for (std::size_t index = 0; index < request.quantity; ++index)
        words += (words.empty() ? "" : " ") + hexWord(request.word(index));
    if (request.quantity == 2)
        words += " (float " + floatText(floatIn(request.data)) + ")";
    return words;
}

std::string dataInWords(const ModbusRequest& request) {
    switch (request.function) {
    case ModbusFunction::WriteSingleCoil:
        return request.coil(0) ? ": on" : ": off";
    case ModbusFunction::WriteSingleRegister:
        return ": " + hexWord(request.word(0));
    case ModbusFunction::WriteMultipleCoils:
        return ": " + coilsInWords(request);
    case ModbusFunction::WriteMultipleRegisters:
        return ": " + registersInWords(request);
    default:
        return {};
    }
}

ModbusFunction functionOf(std::string_view frame) {
    return static_cast<ModbusFunction>(byteAt(frame, modbusHeaderSize));
}

} // namespace

bool ModbusRequest::coil(std::size_t index) const {
    return (byteAt(data, index / 8) >> index % 8 & 1U) != 0;
}

std::uint16_t ModbusRequest::word(std::size_t index) const {
    return wordAt(data, 2 * index);
}

FrameStart firstModbusFrame(std::string_view received) {
    // The two protocol bytes are 0, and the length counts the unit and at least a function code.
    for (std::size_t index = 2; index < 4 && index < received.size(); ++index) {
        if (received[index] != 0)
            return {FrameState::Garbage, 0};
    }
    if (received.size() < 6)
        return {};
    const std::size_t length = wordAt(received, 4);
    if (length < 2 || length > longestModbusFrame - 6)
        return {FrameState::Garbage, 0};
    if (received.size() < 6 + length)
        return {};
    return {FrameState::Complete, 6 + length};
}

bool knowsModbusFunction(std::string_view frame) {
    return frame.size() > modbusHeaderSize && !functionName(functionOf(frame)).empty();
}

std::optional<ModbusRequest> parseModbusRequest(std::string_view frame) {
    if (frame.size() < modbusHeaderSize + 5 || !knowsModbusFunction(frame))
        return std::nullopt;
    ModbusRequest request;
    request.function = functionOf(frame);
    request.address = wordAt(frame, modbusHeaderSize + 1);
    const std::string_view body = frame.substr(modbusHeaderSize + 3);
    if (isSingleWrite(request.function)) {
        request.data = body;
        const bool known = request.function != ModbusFunction::WriteSingleCoil || wordAt(body, 0) == 0xFF00 ||
                           wordAt(body, 0) == 0x0000;
        return body.size() == 2 && known ? std::optional(request) : std::nullopt;
    }
    request.quantity = wordAt(body, 0);
    if (!isMultipleWrite(request.function))
        return body.size() == 2 && request.quantity > 0 ? std::optional(request) : std::nullopt;
    if (request.quantity == 0 || body.size() < 3 || body.size() != std::size_t{3} + byteAt(body, 2))
        return std::nullopt;
    request.data = body.substr(3);
    const std::size_t needed = request.function == ModbusFunction::WriteMultipleCoils
                                   ? (request.quantity + 7U) / 8U
                                   : 2U * request.quantity;
    return request.data.size() == needed ? std::optional(request) : std::nullopt;
}

bool writesModbusMemory(std::string_view frame) {
    const std::optional<ModbusRequest> request = parseModbusRequest(frame);
    return request && (isSingleWrite(request->function) || isMultipleWrite(request->function));
}

std::optional<unsigned> modbusException(std::string_view answer) {
    // An exception repeats the function with its highest bit set; a code follows.
    if (answer.size() != modbusHeaderSize + 2 || (byteAt(answer, modbusHeaderSize) & 0x80U) == 0)
        return std::nullopt;
    return byteAt(answer, modbusHeaderSize + 1);
}

std::string describeModbusRequest(std::string_view frame) {
    if (frame.size() <= modbusHeaderSize)
        return "Not a Modbus request";
    const std::string name(functionName(functionOf(frame)));
    if (name.empty())
        return "Function " + decimalText(byteAt(frame, modbusHeaderSize)) + ", which is not known";
    const std::optional<ModbusRequest> request = parseModbusRequest(frame);
    if (!request)
        return name + ", malformed";
    return name + " " + addressRange(*request) + dataInWords(*request);
}

std::string hexBytes(std::string_view bytes) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text;
    text.reserve(bytes.size() * 3);
    for (std::size_t index = 0; index < bytes.size(); ++index) {
        if (index > 0)
            text += ' ';
        text += digits[byteAt(bytes, index) >> 4U];
        text += digits[byteAt(bytes, index) & 0xFU];
    }
    return text;
}

} // namespace orvista
