#include "link/ModbusReader.h"

#include "link/ModbusAnswers.h"

#include <gmock/gmock.h>

namespace orvista {
namespace {

using ::testing::ElementsAre;

std::vector<std::string> requestsFor(const Project& project) {
    std::vector<std::string> words;
    for (const ReadStep& step : readSteps(displayItems(project)))
        words.push_back(requestInWords(step.request));
    return words;
}

const DisplayItem& item(const std::vector<DisplayItem>& items, const std::string& name) {
    for (const DisplayItem& candidate : items)
        if (candidate.name() == name)
            return candidate;
    throw std::out_of_range(name);
}

TEST(ModbusReader, AsksForBothMessageBlocksTheBooleansAndTheRegistersInTwoParts) {
    EXPECT_THAT(requestsFor(Project()),
                ElementsAre("reading coils 320 to 359", "reading coils 300 to 319",
                            "reading coils 100 to 131", "reading registers 100 to 223",
                            "reading registers 224 to 227"));
    const auto steps = readSteps(displayItems(Project()));
    EXPECT_THAT(steps[0].request,
                ElementsAre(0x01, 0x02, 0x00, 0x00, 0x00, 0x06, 0xFF, 0x01, 0x01, 0x40, 0x00, 0x28));
    EXPECT_THAT(steps[3].request,
                ElementsAre(0x01, 0x02, 0x00, 0x00, 0x00, 0x06, 0xFF, 0x03, 0x00, 0x64, 0x00, 0x7C));
}

TEST(ModbusReader, EveryItemHasItsAddress) {
    const auto items = displayItems(Project());
    ASSERT_EQ(items.size(), 156U);
    EXPECT_EQ(items.front().name(), "STDMSG1");
    EXPECT_EQ(items.back().name(), "CoilVar32");
    EXPECT_EQ(item(items, "STDMSG40").address, 359);
    EXPECT_EQ(item(items, "ALTMSG20").address, 319);
    EXPECT_EQ(item(items, "RegVar64").address, 226);
    EXPECT_EQ(item(items, "CoilVar32").address, 131);
    EXPECT_EQ(unreachableItems(items), "");
}

TEST(ModbusReader, AnswersArriveAtTheirItems) {
    auto items = displayItems(Project());
    const auto steps = readSteps(items);
    const std::uint8_t regular[] = {0x04, 0, 0, 0, 0x80};
    const std::uint8_t emergency[] = {0x01, 0, 0};
    takeAnswer(steps[0], regular, items);
    takeAnswer(steps[1], emergency, items);
    std::vector<std::string> on;
    for (const DisplayItem& candidate : items)
        if (candidate.isMessage() && candidate.isOn())
            on.push_back(candidate.name());
    EXPECT_THAT(on, ElementsAre("STDMSG3", "STDMSG40", "ALTMSG1"));

    std::vector<std::uint8_t> registers(8);
    registers[4] = 0xE9, registers[5] = 0x79, registers[6] = 0x42, registers[7] = 0xF6;
    takeAnswer(steps[4], registers, items);
    EXPECT_EQ(item(items, "RegVar64").value(), 123.456F);
    EXPECT_THAT(item(items, "RegVar64").words(), ElementsAre(0xE979, 0x42F6));
    EXPECT_EQ(item(items, "RegVar63").value(), 0.0F);

    const std::uint8_t booleans[] = {0, 0, 0, 0x80};
    takeAnswer(steps[2], booleans, items);
    EXPECT_TRUE(item(items, "CoilVar32").isOn());
    EXPECT_THAT(item(items, "CoilVar32").words(), ElementsAre(1));
    EXPECT_FALSE(item(items, "CoilVar31").isOn());
}

TEST(ModbusReader, ASecondReadingReplacesTheFirst) {
    auto items = displayItems(Project());
    const auto steps = readSteps(items);
    const std::uint8_t on[] = {0xFF, 0xFF, 0xFF, 0xFF, 0xFF};
    const std::uint8_t off[] = {0, 0, 0, 0, 0};
    takeAnswer(steps[0], on, items);
    EXPECT_TRUE(items[39].isOn());
    takeAnswer(steps[0], off, items);
    EXPECT_EQ(items, displayItems(Project()));
}

TEST(ModbusReader, ReadsThePartOfABlockThatHasAddresses) {
    Project project;
    project.RegularMessage = 65530; // six of them
    project.AlertMessage = -5;      // all but five
    project.DigitalInput = 65536;   // none
    project.AnalogInput = 65535;    // one register, which is not a float
    EXPECT_THAT(requestsFor(project), ElementsAre("reading coils 65530 to 65535", "reading coils 0 to 14"));
    auto items = displayItems(project);
    EXPECT_EQ(unreachableItems(items),
              "STDMSG7 to STDMSG40, ALTMSG1 to ALTMSG5, RegVar1 to RegVar64, CoilVar1 to CoilVar32");
    const std::uint8_t last[] = {0x00, 0x40};
    takeAnswer(readSteps(items)[1], last, items);
    EXPECT_TRUE(item(items, "ALTMSG20").isOn());
    EXPECT_FALSE(item(items, "ALTMSG6").isOn());
}

TEST(ModbusReader, OneItemOutOfReachIsNamedAlone) {
    Project project;
    project.AnalogInput = 65535 - 127;
    EXPECT_EQ(unreachableItems(displayItems(project)), "");
    project.AnalogInput = 65535 - 126;
    EXPECT_EQ(unreachableItems(displayItems(project)), "RegVar64");
    project.AnalogInput = std::numeric_limits<std::int32_t>::max();
    project.RegularMessage = std::numeric_limits<std::int32_t>::min();
    EXPECT_EQ(unreachableItems(displayItems(project)), "STDMSG1 to STDMSG40, RegVar1 to RegVar64");
}

} // namespace
} // namespace orvista
