#include "link/DisplayAddress.h"

#include <gtest/gtest.h>

namespace orvista {
namespace {

DisplayAddress read(std::string_view text, DisplayService service = modbusTcp) {
    return displayAddress(text, service);
}

/// The sentence that refuses the text, empty when it is taken.
std::string refusal(std::string_view text, DisplayService service = modbusTcp) {
    try {
        read(text, service);
    } catch (const BadDisplayAddress& failure) {
        return failure.what();
    }
    return {};
}

TEST(DisplayAddress, WithoutAPortTheServicesOwnCounts) {
    EXPECT_EQ(read("gate-1.plant_2.example"), (DisplayAddress{"gate-1.plant_2.example", 502}));
    EXPECT_EQ(read("192.168.1.100", fileTransfer), (DisplayAddress{"192.168.1.100", 7000}));
    EXPECT_EQ(read("[fe80::5]"), (DisplayAddress{"fe80::5", 502}));
}

TEST(DisplayAddress, APortStandsAfterAColon) {
    EXPECT_EQ(read("gate:1502"), (DisplayAddress{"gate", 1502}));
    EXPECT_EQ(read("[::1]:00502"), (DisplayAddress{"::1", 502}));
    EXPECT_EQ(read("gate:32767", fileTransfer), (DisplayAddress{"gate", 32767}));
    EXPECT_EQ(read("gate:65535"), (DisplayAddress{"gate", 65535}));
}

TEST(DisplayAddress, ALinkLocalAddressMayNameItsInterface) {
    EXPECT_EQ(read("[fe80::5%eth0]:502"), (DisplayAddress{"fe80::5%eth0", 502}));
    EXPECT_EQ(read("[::ffff:10.0.0.5]"), (DisplayAddress{"::ffff:10.0.0.5", 502}));
}

TEST(DisplayAddress, NamesOfOtherScriptsAreTaken) {
    EXPECT_EQ(read("w\xC3\xA4rme:7").host, "w\xC3\xA4rme");
}

TEST(DisplayAddress, IsWrittenWithItsPort) {
    EXPECT_EQ(read("gate").text(), "gate:502");
    EXPECT_EQ(read("[fe80::5%eth0]:7").text(), "[fe80::5%eth0]:7");
}

TEST(DisplayAddress, APortOutOfRangeIsRefused) {
    EXPECT_EQ(refusal("gate:0"), "0 is not a port from 1 to 65535");
    EXPECT_EQ(refusal("gate:65536"), "65536 is not a port from 1 to 65535");
    EXPECT_EQ(refusal("gate:32768", fileTransfer), "32768 is not a port from 1 to 32767");
    EXPECT_EQ(refusal("gate:99999999999999999999"), "99999999999999999999 is not a port from 1 to 65535");
    for (const std::string_view port : {"", " 1", "+1", "-1", "1 ", "0x1", "1.5", "port"})
        EXPECT_NE(refusal("gate:" + std::string(port)), "") << port;
}

TEST(DisplayAddress, AUrlIsRefusedAsAWhole) {
    EXPECT_EQ(refusal("http://gate/x"),
              "http://gate/x is the address of a page, not of a display: NAME, NAME:PORT or [IPv6]:PORT");
    EXPECT_EQ(refusal("modbus://gate:502"),
              "modbus://gate:502 is the address of a page, not of a display: NAME, NAME:PORT or [IPv6]:PORT");
}

TEST(DisplayAddress, AnIpv6AddressStandsInBrackets) {
    EXPECT_EQ(refusal("fe80::5"), "fe80::5 is not a display's address; an IPv6 address stands in brackets");
    for (const std::string_view text : {"[", "[]", "[:]", "[fe80::5", "[gate]", "[10.0.0.5]", "[fe80::g]",
                                        "[fe80::5%]", "[fe80::5%/]", "[::1]502", "[::1] ", "[[::1]]"})
        EXPECT_NE(refusal(text), "") << text;
}

TEST(DisplayAddress, WhatIsNotANameIsRefused) {
    EXPECT_EQ(refusal(""), "an empty text is not a display's name or address");
    EXPECT_EQ(refusal(":502"), ":502 is not a display's name or address");
    for (const std::string_view text : {" ", "gate ", " gate", "-gate", "a/b", "a\\b", "user@gate", "a?b",
                                        "a#b", "a%b", "a\nb", "a\"b", "*", "gate]"})
        EXPECT_NE(refusal(text), "") << text;
    EXPECT_EQ(refusal({"\0a\nb", 4}), "?a?b is not a display's name or address");
    EXPECT_EQ(refusal(std::string(253, 'a')), "");
    EXPECT_NE(refusal(std::string(254, 'a')), "");
}

} // namespace
} // namespace orvista
