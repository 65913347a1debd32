#include "simulator/ModbusRequests.h"
#include "simulator/ModbusResponder.h"

#include <gtest/gtest.h>

#include <array>
#include <modbus/modbus.h>
#include <random>
#include <sys/socket.h>
#include <unistd.h>

namespace orvista {
namespace {

/// What libmodbus's own server answers to a request, and does to a memory of its own.
class LibmodbusServer {
public:
    LibmodbusServer() : context_(modbus_new_tcp("127.0.0.1", MODBUS_TCP_DEFAULT_PORT)) {
        mapping_.nb_bits = static_cast<int>(DeviceMemory::size);
        mapping_.tab_bits = memory.coils.data();
        mapping_.nb_registers = static_cast<int>(DeviceMemory::size);
        mapping_.tab_registers = memory.registers.data();
        // The library sleeps for this long before some of its exceptions.
        modbus_set_response_timeout(context_, 0, 1);
    }
    ~LibmodbusServer() { modbus_free(context_); }
    LibmodbusServer(const LibmodbusServer&) = delete;
    LibmodbusServer& operator=(const LibmodbusServer&) = delete;

    std::string answer(const std::string& frame) {
        std::array<int, 2> ends{};
        EXPECT_EQ(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()), 0);
        EXPECT_EQ(::send(ends[1], frame.data(), frame.size(), MSG_DONTWAIT),
                  static_cast<ssize_t>(frame.size()));
        ::shutdown(ends[1], SHUT_WR);
        modbus_set_socket(context_, ends[0]);
        std::array<std::uint8_t, MODBUS_TCP_MAX_ADU_LENGTH> request{};
        const int size = modbus_receive(context_, request.data());
        if (size > 0)
            modbus_reply(context_, request.data(), size, &mapping_);
        std::array<char, MODBUS_TCP_MAX_ADU_LENGTH> answer{};
        const ssize_t received = ::recv(ends[1], answer.data(), answer.size(), MSG_DONTWAIT);
        ::close(ends[0]);
        ::close(ends[1]);
        return {answer.data(), received > 0 ? static_cast<std::size_t>(received) : 0};
    }

    DeviceMemory memory;

private:
    modbus_t* context_;
    modbus_mapping_t mapping_{};
};

/// A request whose lengths agree, with quantities and addresses about every limit.
std::string randomRequest(std::mt19937& random) {
    constexpr std::array<unsigned, 8> functions = {1, 2, 3, 4, 5, 6, 15, 16};
    constexpr std::array<unsigned, 14> quantities = {0,   1,   7,    8,    9,    123,  124,
                                                     125, 126, 1968, 1969, 2000, 2001, 65535};
    const auto chosen = [&](const auto& values) { return values[random() % values.size()]; };
    const auto word = [](unsigned value) {
        return std::string{static_cast<char>(value >> 8U & 0xFFU), static_cast<char>(value & 0xFFU)};
    };
    const unsigned function = chosen(functions);
    const unsigned quantity = chosen(quantities);
    const unsigned address = random() % 3 != 0 ? random() % 3000 : 65536 - 1 - random() % 2100;
    std::string body = word(address);
    if (function == 5) {
        body += word(random() % 2 != 0 ? 0xFF00 : 0x0000);
    } else if (function == 6) {
        body += word(random());
    } else {
        body += word(quantity);
    }
    if (function >= 15) {
        const std::size_t bytes = function == 15 ? (quantity + 7) / 8 : std::size_t{2} * quantity;
        if (bytes > 247)
            return randomRequest(random);
        body += static_cast<char>(bytes);
        for (std::size_t index = 0; index < bytes; ++index)
            body += static_cast<char>(random() & 0xFFU);
    }
    return word(random()) + word(0) + word(static_cast<unsigned>(2 + body.size())) +
           static_cast<char>(random() & 0xFFU) + static_cast<char>(function) + body;
}

TEST(PerformModbusRequest, AnswersAndChangesTheMemoryAsLibmodbusDoes) {
    LibmodbusServer libmodbus;
    DeviceMemory memory;
    std::mt19937 random(9);
    for (int round = 0; round < 5000; ++round) {
        const std::string frame = randomRequest(random);
        ASSERT_EQ(hexBytes(performModbusRequest(frame, memory)), hexBytes(libmodbus.answer(frame)))
            << hexBytes(frame);
    }
    EXPECT_EQ(memory.coils, libmodbus.memory.coils);
    EXPECT_EQ(memory.registers, libmodbus.memory.registers);
    EXPECT_NE(memory.coils, DeviceMemory().coils);
}

} // namespace
} // namespace orvista
