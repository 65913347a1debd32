#include "simulator/ModbusResponder.h"

#include "simulator/ModbusRequests.h"

#include <algorithm>

namespace orvista {

namespace {

void appendByte(std::string& bytes, std::size_t byte) {
    bytes += static_cast<char>(byte & 0xFFU);
}

void appendWord(std::string& bytes, std::size_t word) {
    appendByte(bytes, word >> 8U);
    appendByte(bytes, word);
}

/// The request's transaction, protocol and unit before an answer of its own; the length counts the unit, too.
std::string answerTo(std::string_view frame, std::string_view functionAndData) {
    std::string answer(frame.substr(0, 4));
    appendWord(answer, 1 + functionAndData.size());
    answer += frame[modbusHeaderSize - 1];
    answer += functionAndData;
    return answer;
}

/// The most that one request may ask for, so that it and its answer fit into a frame.
std::size_t largestQuantity(ModbusFunction function) {
    switch (function) {
    case ModbusFunction::ReadCoils:
    case ModbusFunction::ReadDiscreteInputs:
        return 2000;
    case ModbusFunction::ReadHoldingRegisters:
    case ModbusFunction::ReadInputRegisters:
        return 125;
    case ModbusFunction::WriteMultipleCoils:
        return 1968;
    case ModbusFunction::WriteMultipleRegisters:
        return 123;
    default:
        return 1;
    }
}

/// How many places a function finds from address 0 on.
std::size_t placesFor(ModbusFunction function) {
    const bool isInput =
        function == ModbusFunction::ReadDiscreteInputs || function == ModbusFunction::ReadInputRegisters;
    return isInput ? 0 : DeviceMemory::size;
}

std::string coilBytes(const DeviceMemory& memory, const ModbusRequest& request) {
    std::string bytes((request.quantity + 7U) / 8U, '\0');
    for (std::size_t index = 0; index < request.quantity; ++index) {
        const unsigned bit = memory.coils[request.address + index];
        bytes[index / 8] = static_cast<char>(static_cast<unsigned char>(bytes[index / 8]) | bit << index % 8);
    }
    return bytes;
}

std::string registerBytes(const DeviceMemory& memory, const ModbusRequest& request) {
    std::string bytes;
    for (std::size_t index = 0; index < request.quantity; ++index)
        appendWord(bytes, memory.registers[request.address + index]);
    return bytes;
}

/// The answer to a reading: the function, how many bytes follow, and those.
std::string readAnswer(std::string_view frame, std::string_view data) {
    std::string body(1, frame[modbusHeaderSize]);
    appendByte(body, data.size());
    body += data;
    return answerTo(frame, body);
}

/// The answer to a writing repeats the request's function, address and quantity or single value.
std::string writeAnswer(std::string_view frame) {
    return answerTo(frame, frame.substr(modbusHeaderSize, 5));
}

/// \param request one whose places all lie in the memory
std::string performChecked(std::string_view frame, const ModbusRequest& request, DeviceMemory& memory) {
    switch (request.function) {
    case ModbusFunction::ReadCoils:
        return readAnswer(frame, coilBytes(memory, request));
    case ModbusFunction::ReadHoldingRegisters:
        return readAnswer(frame, registerBytes(memory, request));
    case ModbusFunction::WriteSingleCoil:
    case ModbusFunction::WriteMultipleCoils:
        for (std::size_t index = 0; index < request.quantity; ++index)
            memory.coils[request.address + index] = request.coil(index) ? 1 : 0;
        return writeAnswer(frame);
    default:
        for (std::size_t index = 0; index < request.quantity; ++index)
            memory.registers[request.address + index] = request.word(index);
        return writeAnswer(frame);
    }
}

std::string refuse(std::string_view frame, ModbusException exception) {
    return refuseModbusRequest(frame, static_cast<unsigned>(exception));
}

} // namespace

std::string performModbusRequest(std::string_view frame, DeviceMemory& memory) {
    if (!knowsModbusFunction(frame))
        return refuse(frame, ModbusException::IllegalFunction);
    const std::optional<ModbusRequest> request = parseModbusRequest(frame);
    if (!request || request->quantity > largestQuantity(request->function))
        return refuse(frame, ModbusException::IllegalDataValue);
    if (std::size_t{request->address} + request->quantity > placesFor(request->function))
        return refuse(frame, ModbusException::IllegalDataAddress);
    return performChecked(frame, *request, memory);
}

std::string refuseModbusRequest(std::string_view frame, unsigned exceptionCode) {
    if (frame.size() <= modbusHeaderSize)
        return {};
    std::string body;
    appendByte(body, static_cast<unsigned char>(frame[modbusHeaderSize]) | 0x80U);
    appendByte(body, exceptionCode);
    return answerTo(frame, body);
}

} // namespace orvista
