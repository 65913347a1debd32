#include "simulator/ModbusRequests.h"

#include <gtest/gtest.h>

namespace orvista {
namespace {

std::string bytes(std::initializer_list<unsigned> values) {
    std::string text;
    for (const unsigned value : values)
        text += static_cast<char>(value);
    return text;
}

const std::string emergencyOneAndThree =
    bytes({1, 2, 0, 0, 0, 0x0A, 0xFF, 0x0F, 0x01, 0x2C, 0, 0x14, 3, 5, 0, 0});

TEST(FirstModbusFrame, IsIncompleteAtEveryCutAndCompleteAtItsEnd) {
    for (std::size_t size = 0; size < emergencyOneAndThree.size(); ++size)
        EXPECT_EQ(firstModbusFrame(emergencyOneAndThree.substr(0, size)).state, FrameState::Incomplete)
            << size;
    EXPECT_EQ(firstModbusFrame(emergencyOneAndThree), (FrameStart{FrameState::Complete, 16}));
}

TEST(FirstModbusFrame, EndsWhereTheNextBegins) {
    EXPECT_EQ(firstModbusFrame(emergencyOneAndThree + emergencyOneAndThree),
              (FrameStart{FrameState::Complete, 16}));
}

TEST(FirstModbusFrame, KnowsForeignBytesByTheProtocolAndTheLength) {
    EXPECT_EQ(firstModbusFrame("GET / HTTP/1.0\r\n").state, FrameState::Garbage);
    EXPECT_EQ(firstModbusFrame(bytes({1, 2, 0, 1})).state, FrameState::Garbage);
    EXPECT_EQ(firstModbusFrame(bytes({1, 2, 0, 0, 0, 1})).state, FrameState::Garbage);
    EXPECT_EQ(firstModbusFrame(bytes({1, 2, 0, 0, 0, 0xFF})).state, FrameState::Garbage);
    EXPECT_EQ(firstModbusFrame(bytes({1, 2, 0, 0, 0xFF, 0xFF})).state, FrameState::Garbage);
    EXPECT_EQ(firstModbusFrame(bytes({1, 2, 0, 0, 0, 0xFE})).state, FrameState::Incomplete);
}

TEST(DescribeModbusRequest, SaysWhatIsWritten) {
    EXPECT_EQ(describeModbusRequest(emergencyOneAndThree), "Write Multiple Coils 300..319: 1, 3 on");
    EXPECT_EQ(describeModbusRequest(
                  bytes({1, 2, 0, 0, 0, 0x0C, 0xFF, 0x0F, 0x01, 0x40, 0, 0x28, 5, 0, 0, 0, 0, 0x80})),
              "Write Multiple Coils 320..359: 40 on");
    EXPECT_EQ(
        describeModbusRequest(bytes({1, 2, 0, 0, 0, 0x0A, 0xFF, 0x0F, 0x01, 0x2C, 0, 0x14, 3, 0, 0, 0})),
        "Write Multiple Coils 300..319: all off");
    EXPECT_EQ(describeModbusRequest(bytes({1, 2, 0, 0, 0, 6, 0xFF, 5, 0, 0x64, 0xFF, 0})),
              "Write Single Coil 100: on");
    EXPECT_EQ(describeModbusRequest(bytes({1, 2, 0, 0, 0, 6, 0xFF, 5, 0xFF, 0xFF, 0, 0})),
              "Write Single Coil 65535: off");
}

TEST(DescribeModbusRequest, ReadsTwoRegistersAsAFloatWithItsLowWordFirst) {
    EXPECT_EQ(
        describeModbusRequest(bytes({1, 2, 0, 0, 0, 0x0B, 0xFF, 0x10, 0, 0x64, 0, 2, 4, 0, 0, 0x3F, 0x80})),
        "Write Multiple Registers 100..101: 0000 3F80 (float 1)");
    EXPECT_EQ(describeModbusRequest(
                  bytes({1, 2, 0, 0, 0, 0x0B, 0xFF, 0x10, 0, 0x66, 0, 2, 4, 0xE9, 0x79, 0x42, 0xF6})),
              "Write Multiple Registers 102..103: E979 42F6 (float 123.456)");
    EXPECT_EQ(describeModbusRequest(bytes({1, 2, 0, 0, 0, 9, 0xFF, 0x10, 0, 0x64, 0, 1, 2, 0xAB, 0xCD})),
              "Write Multiple Registers 100: ABCD");
    EXPECT_EQ(describeModbusRequest(bytes({1, 2, 0, 0, 0, 6, 0xFF, 6, 0, 0x64, 0x12, 0x34})),
              "Write Single Register 100: 1234");
}

TEST(DescribeModbusRequest, NamesReadsAndStrangers) {
    EXPECT_EQ(describeModbusRequest(bytes({1, 2, 0, 0, 0, 6, 0xFF, 1, 0, 0x64, 0, 0x20})),
              "Read Coils 100..131");
    EXPECT_EQ(describeModbusRequest(bytes({1, 2, 0, 0, 0, 6, 0xFF, 3, 0, 0x64, 0, 1})),
              "Read Holding Registers 100");
    EXPECT_EQ(describeModbusRequest(bytes({1, 2, 0, 0, 0, 2, 0xFF, 0x2B})),
              "Function 43, which is not known");
    EXPECT_EQ(describeModbusRequest("short"), "Not a Modbus request");
}

TEST(ParseModbusRequest, RefusesLengthsThatDoNotAgree) {
    // Twenty coils in two bytes; a byte count beyond the frame; a frame beyond the byte count; no coil at
    // all.
    EXPECT_FALSE(parseModbusRequest(bytes({1, 2, 0, 0, 0, 9, 0xFF, 0x0F, 1, 0x2C, 0, 0x14, 2, 5, 0})));
    EXPECT_FALSE(parseModbusRequest(bytes({1, 2, 0, 0, 0, 10, 0xFF, 0x0F, 1, 0x2C, 0, 0x14, 9, 5, 0, 0})));
    EXPECT_FALSE(parseModbusRequest(emergencyOneAndThree + "x"));
    EXPECT_FALSE(parseModbusRequest(bytes({1, 2, 0, 0, 0, 7, 0xFF, 0x0F, 1, 0x2C, 0, 0, 0})));
    EXPECT_FALSE(parseModbusRequest(bytes({1, 2, 0, 0, 0, 6, 0xFF, 5, 0, 0x64, 0x12, 0x34})));
    EXPECT_EQ(describeModbusRequest(emergencyOneAndThree + "x"), "Write Multiple Coils, malformed");
}

TEST(HexBytes, ShowsEveryByteAsTwoDigits) {
    EXPECT_EQ(hexBytes(bytes({0, 0x0A, 0x7F, 0x80, 0xFF})), "00 0A 7F 80 FF");
    EXPECT_EQ(hexBytes(""), "");
}

} // namespace
} // namespace orvista
