#include "link/ModbusFrames.h"

#include "model/Numbers.h"

#include <gmock/gmock.h>

#include <cmath>
#include <initializer_list>
#include <limits>
#include <string>

namespace orvista {
namespace {

using ::testing::ElementsAre;

template <std::size_t count>
std::array<bool, count> ticked(std::initializer_list<std::size_t> numbers) {
    std::array<bool, count> on{};
    for (const std::size_t number : numbers)
        on.at(number - 1) = true;
    return on;
}

Frame emergency(const char* address, std::initializer_list<std::size_t> numbers) {
    return emergencyMessagesRequest(requestAddress(address), ticked<emergencyMessageCount>(numbers));
}

Frame regular(const char* address, std::initializer_list<std::size_t> numbers) {
    return regularMessagesRequest(requestAddress(address), ticked<regularMessageCount>(numbers));
}

Frame tail(const Frame& frame, std::size_t count) {
    return {frame.end() - static_cast<std::ptrdiff_t>(count), frame.end()};
}

Frame floatBytes(const char* text) {
    return tail(registerPairRequest(100, requestValue(text)), 4);
}

TEST(ModbusFrames, EmergencyOneAndThree) {
    EXPECT_THAT(emergency("300", {1, 3}), ElementsAre(0x01, 0x02, 0x00, 0x00, 0x00, 0x0A, 0xFF, 0x0F, 0x01,
                                                      0x2C, 0x00, 0x14, 0x03, 0x05, 0x00, 0x00));
}

TEST(ModbusFrames, LastFourEmergencyMessagesFillTheLowerHalfOfTheLastByte) {
    EXPECT_THAT(tail(emergency("300", {17, 18, 19, 20}), 3), ElementsAre(0x00, 0x00, 0x0F));
}

TEST(ModbusFrames, AllEmergencyMessages) {
    std::array<bool, emergencyMessageCount> all;
    all.fill(true);
    EXPECT_THAT(tail(emergencyMessagesRequest(0, all), 3), ElementsAre(0xFF, 0xFF, 0x0F));
}

TEST(ModbusFrames, RegularForty) {
    EXPECT_THAT(regular("320", {40}), ElementsAre(0x01, 0x02, 0x00, 0x00, 0x00, 0x0C, 0xFF, 0x0F, 0x01, 0x40,
                                                  0x00, 0x28, 0x05, 0x00, 0x00, 0x00, 0x00, 0x80));
}

TEST(ModbusFrames, EveryCheckBoxSetsItsOwnBit) {
    for (std::size_t number = 1; number <= regularMessageCount; ++number) {
        Frame expected(5, 0);
        expected[(number - 1) / 8] = static_cast<std::uint8_t>(1u << (number - 1) % 8);
        EXPECT_EQ(tail(regular("320", {number}), 5), expected) << number;
    }
    for (std::size_t number = 1; number <= emergencyMessageCount; ++number) {
        Frame expected(3, 0);
        expected[(number - 1) / 8] = static_cast<std::uint8_t>(1u << (number - 1) % 8);
        EXPECT_EQ(tail(emergency("300", {number}), 3), expected) << number;
    }
}

TEST(ModbusFrames, CoilOnAndOff) {
    EXPECT_THAT(coilRequest(requestAddress("100"), true),
                ElementsAre(0x01, 0x02, 0x00, 0x00, 0x00, 0x06, 0xFF, 0x05, 0x00, 0x64, 0xFF, 0x00));
    EXPECT_THAT(coilRequest(requestAddress("100"), false),
                ElementsAre(0x01, 0x02, 0x00, 0x00, 0x00, 0x06, 0xFF, 0x05, 0x00, 0x64, 0x00, 0x00));
}

TEST(ModbusFrames, FloatOne) {
    EXPECT_THAT(registerPairRequest(requestAddress("100"), requestValue("1")),
                ElementsAre(0x01, 0x02, 0x00, 0x00, 0x00, 0x0B, 0xFF, 0x10, 0x00, 0x64, 0x00, 0x02, 0x04,
                            0x00, 0x00, 0x3F, 0x80));
}

TEST(ModbusFrames, FloatsCarryTheLowWordFirst) {
    EXPECT_THAT(floatBytes("100.0"), ElementsAre(0x00, 0x00, 0x42, 0xC8));
    EXPECT_THAT(floatBytes("-2.5"), ElementsAre(0x00, 0x00, 0xC0, 0x20));
    EXPECT_THAT(floatBytes("123.456"), ElementsAre(0xE9, 0x79, 0x42, 0xF6));
}

TEST(ModbusFrames, RegistersAreWrittenAsTheyAre) {
    EXPECT_THAT(registersRequest(300, std::array<std::uint16_t, 3>{0x1234, 0, 0xFFFF}),
                ElementsAre(0x01, 0x02, 0x00, 0x00, 0x00, 0x0D, 0xFF, 0x10, 0x01, 0x2C, 0x00, 0x03, 0x06,
                            0x12, 0x34, 0x00, 0x00, 0xFF, 0xFF));
    const Frame most = registersRequest(0, std::vector<std::uint16_t>(mostRegistersWritten, 1));
    EXPECT_EQ(most.size(), 259u); // the protocol allows 260
    EXPECT_EQ(most[12], 246);
}

TEST(ModbusFrames, TextWithoutANumberIsZero) {
    EXPECT_THAT(floatBytes(""), ElementsAre(0, 0, 0, 0));
    EXPECT_THAT(floatBytes("warm"), ElementsAre(0, 0, 0, 0));
    EXPECT_THAT(floatBytes("inf"), ElementsAre(0, 0, 0, 0));
    EXPECT_THAT(floatBytes("nan"), ElementsAre(0, 0, 0, 0));
    EXPECT_EQ(requestAddress(""), 0);
    EXPECT_EQ(requestAddress("coil 7"), 0);
    EXPECT_EQ(requestAddress("0x10"), 0);
}

TEST(ModbusFrames, AddressBytesAtTheEdges) {
    const auto addressBytes = [](const char* text) {
        const Frame frame = coilRequest(requestAddress(text), true);
        return Frame{frame[8], frame[9]};
    };
    EXPECT_THAT(addressBytes("255"), ElementsAre(0x00, 0xFF));
    EXPECT_THAT(addressBytes("256"), ElementsAre(0x01, 0x00));
    EXPECT_THAT(addressBytes("65535"), ElementsAre(0xFF, 0xFF));
}

TEST(ModbusFrames, EveryAddressIsSentAsItStands) {
    for (int address = 0; address <= 65535; ++address) {
        const Frame frame = registerPairRequest(requestAddress(std::to_string(address)), 0.0F);
        ASSERT_EQ(frame[8], address / 256) << address;
        ASSERT_EQ(frame[9], address % 256) << address;
    }
}

TEST(ModbusFrames, AddressesBeyondSixteenBitsOverflow) {
    for (const char* text : {"65536", "65535.5", "-1", "-0.6", "1e5", "4294967396", "1e999", "&H10000",
                             "&HFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFF"})
        EXPECT_THROW(requestAddress(text), Overflow) << text;
}

TEST(ModbusFrames, AddressesRoundHalvesToEven) {
    EXPECT_EQ(requestAddress("0.5"), 0);
    EXPECT_EQ(requestAddress("1.5"), 2);
    EXPECT_EQ(requestAddress("2.5"), 2);
    EXPECT_EQ(requestAddress("-0.5"), 0);
    EXPECT_EQ(requestAddress("65535.4"), 65535);
}

TEST(ModbusFrames, LeadingPartOfAnAddressCounts) {
    EXPECT_EQ(requestAddress("  300 coils"), 300);
    EXPECT_EQ(requestAddress("12abc"), 12);
    EXPECT_EQ(requestAddress("1 00"), 1);
    EXPECT_EQ(requestAddress("1e2"), 100);
    EXPECT_EQ(requestAddress("+5"), 5);
}

TEST(ModbusFrames, HexadecimalAfterAmpersandH) {
    EXPECT_EQ(requestAddress("&H12C"), 300);
    EXPECT_EQ(requestAddress("&hff"), 255);
    EXPECT_EQ(requestAddress(" &HFFFF"), 65535);
    EXPECT_EQ(requestAddress("&H"), 0);
    EXPECT_EQ(requestAddress("&H1G"), 1);
    EXPECT_EQ(requestAddress("&H-1"), 0);
    EXPECT_EQ(requestAddress("&H1.8p3"), 1);
    EXPECT_EQ(requestAddress("&Hinf"), 0);
    EXPECT_EQ(requestAddress("H10"), 0);
    EXPECT_EQ(requestAddress("-&H10"), 0);
    EXPECT_THAT(floatBytes("&H10"), ElementsAre(0x00, 0x00, 0x41, 0x80));
    EXPECT_THROW(requestAddress("&H" + std::string(400, 'F')), Overflow);
}

TEST(ModbusFrames, ValuesBeyondSinglePrecisionOverflow) {
    // The largest single is 3.40282346638528859812e38; half a unit above it rounding gives infinity.
    EXPECT_EQ(requestValue("3.4028234e38"), std::numeric_limits<float>::max());
    EXPECT_EQ(requestValue("3.4028235e38"), std::numeric_limits<float>::max());
    EXPECT_EQ(requestValue("-3.4028235e38"), std::numeric_limits<float>::lowest());
    for (const char* text : {"3.4028236e38", "-3.4028236e38", "1e39", "1e308", "1e309", "-1e400"})
        EXPECT_THROW(requestValue(text), Overflow) << text;
}

TEST(ModbusFrames, ValuesRoundToTheNearestSingle) {
    EXPECT_EQ(requestValue("16777217"), 16777216.0F);
    EXPECT_EQ(requestValue("16777219"), 16777220.0F);
    EXPECT_EQ(requestValue("1e-45"), std::numeric_limits<float>::denorm_min());
    EXPECT_EQ(requestValue("1e-60"), 0.0F);
    EXPECT_THAT(floatBytes("1e-400"), ElementsAre(0, 0, 0, 0));
}

TEST(ModbusFrames, EveryRequestHasTheSameTransactionIdentifier) {
    for (int round = 0; round < 3; ++round)
        for (const Frame& frame : {emergencyMessagesRequest(300, {}), regularMessagesRequest(320, {}),
                                   coilRequest(100, true), registerPairRequest(100, 1.0F)})
            EXPECT_EQ((Frame{frame[0], frame[1]}), (Frame{0x01, 0x02}));
}

} // namespace
} // namespace orvista
