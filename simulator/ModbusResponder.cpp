#include "simulator/ModbusResponder.h"

#include "simulator/ModbusRequests.h"
#include "simulator/SocketPair.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <modbus/modbus.h>
#include <stdexcept>

namespace orvista {

namespace {

using RequestBytes = std::array<std::uint8_t, MODBUS_TCP_MAX_ADU_LENGTH>;

modbus_mapping_t mappingOf(DeviceMemory& memory) {
    modbus_mapping_t mapping{};
    mapping.nb_bits = static_cast<int>(DeviceMemory::size);
    mapping.tab_bits = memory.coils.data();
    mapping.nb_registers = static_cast<int>(DeviceMemory::size);
    mapping.tab_registers = memory.registers.data();
    return mapping;
}

} // namespace

void ModbusResponder::FreeContext::operator()(_modbus* context) const {
    modbus_free(context);
}

ModbusResponder::ModbusResponder(DeviceMemory& memory)
    : memory_(memory), context_(modbus_new_tcp("127.0.0.1", MODBUS_TCP_DEFAULT_PORT)) {
    // Before some exceptions the library sleeps for the response time-out, so it is made as short as can be.
    if (!context_ || modbus_set_response_timeout(context_.get(), 0, 1) != 0)
        throw std::runtime_error(modbus_strerror(errno));
}

template <typename Reply>
std::string ModbusResponder::exchange(std::string_view frame, Reply reply) {
    if (frame.size() > longestModbusFrame)
        return {};
    const SocketPair sockets;
    if (!sockets.giveRequest(frame))
        return {};
    modbus_set_socket(context_.get(), sockets.libraryEnd());
    reply();
    modbus_set_socket(context_.get(), -1);
    return sockets.takeAnswer();
}

std::string ModbusResponder::perform(std::string_view frame) {
    if (!knowsModbusFunction(frame))
        return refuse(frame, MODBUS_EXCEPTION_ILLEGAL_FUNCTION);
    if (!parseModbusRequest(frame))
        return refuse(frame, MODBUS_EXCEPTION_ILLEGAL_DATA_VALUE);
    return exchange(frame, [this] {
        RequestBytes request{};
        const int size = modbus_receive(context_.get(), request.data());
        modbus_mapping_t mapping = mappingOf(memory_);
        if (size > 0)
            modbus_reply(context_.get(), request.data(), size, &mapping);
    });
}

std::string ModbusResponder::refuse(std::string_view frame, unsigned exceptionCode) {
    if (frame.size() <= modbusHeaderSize)
        return {};
    return exchange(frame, [&] {
        RequestBytes request{};
        std::copy(frame.begin(), frame.end(), request.begin());
        modbus_reply_exception(context_.get(), request.data(), exceptionCode);
    });
}

} // namespace orvista
