#include "link/DisplayWrites.h"

#include "link/ModbusFrames.h"
#include "model/Numbers.h"

#include <gmock/gmock.h>

#include <functional>

namespace orvista {
namespace {

using ::testing::ElementsAre;

/// What is written, and the bytes of each request after the header.
std::vector<std::string> shownWrites(const std::vector<DisplayWrite>& writes) {
    std::vector<std::string> shown;
    for (const DisplayWrite& write : writes) {
        std::string text = write.what + ":";
        for (std::size_t i = 7; i < write.request.size(); ++i)
            text += " " + hexWord(write.request[i]).substr(2);
        shown.push_back(text);
    }
    return shown;
}

std::string whyNot(const std::function<void()>& write) {
    try {
        write();
    } catch (const BadWrite& bad) {
        return bad.what();
    }
    return "it was taken";
}

class DisplayWritesTest : public ::testing::Test {
protected:
    std::string whyNotAssigned(const std::string& assignment) const {
        return whyNot([&] { assignedWrites({assignment}, &project); });
    }

    Project project;
};

TEST_F(DisplayWritesTest, MessagesAreSwitchedOffBeforeOthersAreSwitchedOn) {
    EXPECT_THAT(
        shownWrites(switchWrites(project, {"STDMSG40", "altmsg1"}, {"STDMSG2", "STDMSG2"})),
        ElementsAre("STDMSG2: 05 01 41 00 00", "STDMSG40: 05 01 67 FF 00", "ALTMSG1: 05 01 2C FF 00"));
    EXPECT_EQ(whyNot([&] { switchWrites(project, {"STDMSG2"}, {"stdmsg2"}); }),
              "STDMSG2 is in both --on and --off");
    EXPECT_EQ(whyNot([&] { switchWrites(project, {"STDMSG41"}, {}); }),
              "STDMSG41 is not a message; there are STDMSG1 to STDMSG40 and ALTMSG1 to ALTMSG20");
}

TEST_F(DisplayWritesTest, OnlyTheseMessagesAreOnInBothBlocks) {
    EXPECT_THAT(shownWrites(onlyWrites(project, {"STDMSG1", "STDMSG40", "ALTMSG20"})),
                ElementsAre("the emergency messages: 0F 01 2C 00 14 03 00 00 08",
                            "the regular messages: 0F 01 40 00 28 05 01 00 00 00 80"));
}

TEST_F(DisplayWritesTest, AddressesOfMessagesFitIntoARequest) {
    project.RegularMessage = 65496;
    EXPECT_THAT(shownWrites(switchWrites(project, {"STDMSG40"}, {})),
                ElementsAre("STDMSG40: 05 FF FF FF 00"));
    EXPECT_EQ(onlyWrites(project, {}).size(), 2U);
    project.RegularMessage = 65497;
    const std::string beyond =
        "STDMSG40 has no address that a request can hold: the address map puts it at 65536";
    EXPECT_EQ(whyNot([&] { switchWrites(project, {"STDMSG40"}, {}); }), beyond);
    EXPECT_EQ(whyNot([&] { onlyWrites(project, {}); }), beyond);
    EXPECT_EQ(switchWrites(project, {"STDMSG39"}, {}).size(), 1U);
    project.RegularMessage = -1;
    EXPECT_EQ(whyNot([&] { onlyWrites(project, {}); }),
              "STDMSG1 has no address that a request can hold: the address map puts it at -1");
}

TEST_F(DisplayWritesTest, VariablesAreAssignedByNameOrAddress) {
    EXPECT_THAT(shownWrites(assignedWrites({"RegVar3=12.5", "CoilVar32=on", "coilvar1=OFF"}, &project)),
                ElementsAre("RegVar3: 10 00 68 00 02 04 00 00 41 48", "CoilVar32: 05 00 83 FF 00",
                            "CoilVar1: 05 00 64 00 00"));
    EXPECT_THAT(shownWrites(assignedWrites({"200=1", "0xFFFF=on", "65534=1", "65535=off"}, nullptr)),
                ElementsAre("200: 10 00 C8 00 02 04 00 00 3F 80", "65535: 05 FF FF FF 00",
                            "65534: 10 FF FE 00 02 04 00 00 3F 80", "65535: 05 FF FF 00 00"));
    EXPECT_EQ(whyNotAssigned("65535=1"), "65535=1: there are floats from 0 to 65534");
    EXPECT_EQ(whyNotAssigned("65536=on"), "65536=on: there are coils from 0 to 65535");
    EXPECT_EQ(whyNotAssigned("CoilVar1=2"), "CoilVar1=2: a Boolean variable is on or off");
    EXPECT_EQ(whyNotAssigned("STDMSG1=on"), "STDMSG1=on: messages are switched, not written");
    EXPECT_EQ(whyNotAssigned("RegVar1"), "RegVar1 has no value: write RegVar3=12.5, CoilVar2=on or 200=1.5");
    project.AnalogInput = 65535 - 127;
    EXPECT_EQ(assignedWrites({"RegVar64=1"}, &project).size(), 1U);
    project.AnalogInput = 65536 - 127;
    EXPECT_EQ(whyNotAssigned("RegVar64=1"),
              "RegVar64 has no address that a request can hold: the address map puts it at 65535");
}

TEST_F(DisplayWritesTest, ReferencesAreNoAddressesWhereNothingLies) {
    EXPECT_EQ(whyNotAssigned("40101=1"),
              "40101 reads like a reference: write 100=1, or 0x9CA5=1 for address 40101");
    EXPECT_EQ(whyNotAssigned("40001=1"),
              "40001 reads like a reference: write 0=1, or 0x9C41=1 for address 40001");
    EXPECT_EQ(whyNotAssigned("49999=1"),
              "49999 reads like a reference: write 9998=1, or 0xC34F=1 for address 49999");
    EXPECT_EQ(whyNotAssigned("00001=on"),
              "00001 reads like a reference: write 0=on, or 0x0001=on for address 1");
    EXPECT_EQ(whyNotAssigned("00000=on"),
              "00000 reads like a reference: write 0=on, or 0x0000=on for address 0");
    for (const char* address : {"40000=1", "50000=1", "0x9CA5=1", "0001=on", "000001=on"})
        EXPECT_EQ(whyNotAssigned(address), "it was taken") << address;
    project.AnalogInput = 40101;
    EXPECT_EQ(whyNotAssigned("40101=1"), "it was taken");
}

} // namespace
} // namespace orvista
