#include "simulator/ModbusResponder.h"

#include "simulator/ModbusRequests.h"

#include <gtest/gtest.h>
#include <random>

namespace orvista {
namespace {

std::string bytes(std::initializer_list<unsigned> values) {
    std::string text;
    for (const unsigned value : values)
        text += static_cast<char>(value);
    return text;
}

class ModbusResponderTest : public ::testing::Test {
protected:
    std::string answer(std::initializer_list<unsigned> request) {
        return hexBytes(performModbusRequest(bytes(request), memory));
    }

    DeviceMemory memory;
};

TEST_F(ModbusResponderTest, WritesTwentyCoilsAndAnswersWithTheirRange) {
    EXPECT_EQ(answer({1, 2, 0, 0, 0, 0x0A, 0xFF, 0x0F, 0x01, 0x2C, 0, 0x14, 3, 5, 0, 8}),
              "01 02 00 00 00 06 FF 0F 01 2C 00 14");
    for (int index = 0; index < 20; ++index)
        EXPECT_EQ(memory.coil(300 + index), index == 0 || index == 2 || index == 19) << index;
    EXPECT_FALSE(memory.coil(320));
}

TEST_F(ModbusResponderTest, LeavesTheCoilsAroundTheRangeAlone) {
    memory.setCoil(299, true);
    memory.setCoil(320, true);
    memory.setCoil(310, true);
    answer({1, 2, 0, 0, 0, 0x0A, 0xFF, 0x0F, 0x01, 0x2C, 0, 0x14, 3, 0, 0, 0xF0});
    EXPECT_TRUE(memory.coil(299));
    EXPECT_TRUE(memory.coil(320));
    EXPECT_FALSE(memory.coil(310));
}

TEST_F(ModbusResponderTest, WritesTheLastCoilThereIs) {
    EXPECT_EQ(answer({1, 2, 0, 0, 0, 6, 0xFF, 5, 0xFF, 0xFF, 0xFF, 0}),
              "01 02 00 00 00 06 FF 05 FF FF FF 00");
    EXPECT_TRUE(memory.coil(65535));
    EXPECT_EQ(answer({1, 2, 0, 0, 0, 6, 0xFF, 5, 0xFF, 0xFF, 0, 0}), "01 02 00 00 00 06 FF 05 FF FF 00 00");
    EXPECT_FALSE(memory.coil(65535));
}

TEST_F(ModbusResponderTest, ReadsAFloatWithItsLowWordFirst) {
    EXPECT_EQ(answer({1, 2, 0, 0, 0, 0x0B, 0xFF, 0x10, 0, 0x64, 0, 2, 4, 0xE9, 0x79, 0x42, 0xF6}),
              "01 02 00 00 00 06 FF 10 00 64 00 02");
    EXPECT_EQ(memory.floatAt(100), 123.456F);
    EXPECT_EQ(answer({0, 9, 0, 0, 0, 6, 0xFF, 3, 0, 0x64, 0, 2}), "00 09 00 00 00 07 FF 03 04 E9 79 42 F6");
}

TEST_F(ModbusResponderTest, AnswersUnknownFunctionsAndAddressesBeyondTheEndWithExceptions) {
    EXPECT_EQ(answer({1, 2, 0, 0, 0, 2, 0xFF, 0x2B}), "01 02 00 00 00 03 FF AB 01");
    EXPECT_EQ(answer({1, 2, 0, 0, 0, 0x0B, 0xFF, 0x10, 0xFF, 0xFF, 0, 2, 4, 0, 0, 0, 0}),
              "01 02 00 00 00 03 FF 90 02");
    EXPECT_EQ(answer({1, 2, 0, 0, 0, 6, 0xFF, 2, 0, 0, 0, 1}), "01 02 00 00 00 03 FF 82 02");
}

TEST_F(ModbusResponderTest, RefusesMalformedRequestsWithoutPerformingThem) {
    EXPECT_EQ(answer({1, 2, 0, 0, 0, 10, 0xFF, 0x0F, 1, 0x2C, 0, 0x14, 9, 0xFF, 0xFF, 0xFF}),
              "01 02 00 00 00 03 FF 8F 03");
    EXPECT_FALSE(memory.coil(300));
}

TEST_F(ModbusResponderTest, RefusesOnRequestWithoutPerforming) {
    const std::string request = bytes({1, 2, 0, 0, 0, 6, 0xFF, 5, 0, 0x64, 0xFF, 0});
    for (unsigned code = 1; code <= 11; ++code) {
        const std::string reply = refuseModbusRequest(request, code);
        ASSERT_EQ(reply.size(), 9U) << code;
        EXPECT_EQ(hexBytes(reply.substr(7, 1)), "85");
        EXPECT_EQ(static_cast<unsigned>(static_cast<unsigned char>(reply[8])), code);
    }
    EXPECT_FALSE(memory.coil(100));
}

TEST_F(ModbusResponderTest, SurvivesEveryFunctionWithEveryLengthAndNeverWaits) {
    std::mt19937 random(7);
    for (unsigned function = 0; function < 256; ++function) {
        for (std::size_t size = modbusHeaderSize + 1; size <= 24; ++size) {
            std::string frame = bytes({1, 2, 0, 0, 0, static_cast<unsigned>(size - 6), 0xFF, function});
            while (frame.size() < size)
                frame += static_cast<char>(random() & 0xFFU);
            EXPECT_FALSE(performModbusRequest(frame, memory).empty()) << function << " " << size;
        }
    }
}

TEST(DeviceMemoryTest, TakesAddressesOutsideAsOff) {
    DeviceMemory memory;
    memory.setCoil(-1, true);
    memory.setCoil(65536, true);
    memory.setFloat(65535, 1.0F);
    memory.setFloat(-1, 1.0F);
    EXPECT_FALSE(memory.coil(-1));
    EXPECT_FALSE(memory.coil(65536));
    EXPECT_EQ(memory.floatAt(65535), 0.0F);
    EXPECT_EQ(memory.registers[65535], 0);
    memory.setFloat(65534, -2.5F);
    EXPECT_EQ(memory.registers[65534], 0x0000);
    EXPECT_EQ(memory.registers[65535], 0xC020);
}

} // namespace
} // namespace orvista
