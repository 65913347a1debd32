#include "model/Fields.h"
#include "tests/support/NamedItem.h"

#include <gmock/gmock.h>

#include <set>
#include <string>
#include <vector>

namespace orvista {
namespace {

using ::testing::ElementsAre;

std::vector<std::string> namesOfFields(Kind kind) {
    std::vector<std::string> names;
    for (const Field& field : fieldsOf(kind))
        names.emplace_back(field.name);
    return names;
}

/// The text that a cell stands for, or what is wrong with it.
std::string taken(const char* item, const char* field, const std::string& cell) {
    const auto text = cellText(*fieldOf(item, field), cell);
    const auto* const fault = std::get_if<CellFault>(&text);
    return fault ? "! " + fault->text : std::get<std::string>(text);
}

TEST(Fields, AreListedInTheOrderOfTheFiles) {
    EXPECT_THAT(namesOfFields(Kind::Float), ElementsAre("default", "width", "precision"));
    EXPECT_THAT(namesOfFields(Kind::Boolean), ElementsAre("default", "on", "off"));
    EXPECT_THAT(namesOfFields(Kind::Regular), ElementsAre("script"));
    EXPECT_THAT(namesOfFields(Kind::Emergency), ElementsAre("script"));
    EXPECT_THAT(namesOfFields(Kind::AddressMap),
                ElementsAre("AnalogInput", "DigitalInput", "AlertMessage", "RegularMessage"));
    EXPECT_EQ(fieldNamed(Kind::Float, "on"), nullptr);
    EXPECT_EQ(fieldNamed(Kind::Float, "Width"), nullptr);
}

TEST(Fields, TellWhatEachItemHolds) {
    Project project;
    project.STDMSG[11] = "CLEAR\r\nSTILL 500";
    project.ALTMSG[19] = "x";
    project.RegVar[5].defaultValue = "1.5";
    project.CoilVar[31].onText = "AUF";
    project.AlertMessage = -500;
    EXPECT_THAT(textsOf(project, named("STDMSG12")), ElementsAre("CLEAR\r\nSTILL 500"));
    EXPECT_THAT(textsOf(project, named("ALTMSG20")), ElementsAre("x"));
    EXPECT_THAT(textsOf(project, named("RegVar6")), ElementsAre("1.5", "7", "3"));
    EXPECT_THAT(textsOf(project, named("CoilVar32")), ElementsAre("0", "AUF", "OFF"));
    EXPECT_THAT(textsOf(project, named("address map")), ElementsAre("100", "100", "-500", "320"));
}

TEST(Fields, AreSetOneByOne) {
    // Every text of a project another one, each of which is read back at its own place.
    Project project;
    std::set<std::string> texts;
    for (const Item item : allItems())
        for (const Field& field : fieldsOf(item.kind)) {
            const std::string text = std::to_string(1000 + texts.size());
            ASSERT_TRUE(setText(project, item, field, text));
            texts.insert(text);
        }
    EXPECT_EQ(texts.size(), 4U + 64 * 3 + 32 * 3 + 60);
    for (const Item item : allItems())
        for (const Field& field : fieldsOf(item.kind))
            EXPECT_EQ(texts.erase(textOf(project, item, field)), 1U);
    EXPECT_EQ(project.RegVar[0].name, "RegVar1");
    EXPECT_EQ(project.RegularMessage, 1003);
    EXPECT_EQ(project.CoilVar[31].offText, std::to_string(1003 + 64 * 3 + 32 * 3));
}

TEST(Fields, AnAddressIsTheDigitsOfANumberOf32Bits) {
    Project project;
    const Field& start = *fieldOf("address map", "AnalogInput");
    for (const char* text : {"", " 1", "1 ", "+1", "1.0", "2147483648", "-2147483649", "x"})
        EXPECT_FALSE(setText(project, {}, start, text)) << text;
    EXPECT_EQ(project.AnalogInput, 100);
    EXPECT_TRUE(setText(project, {}, start, "-2147483648"));
    EXPECT_EQ(project.AnalogInput, -2147483647 - 1);
    EXPECT_THROW(replaceText(project, {}, start, 0, "", "x"), std::invalid_argument);
}

TEST(Fields, OfTwoProjectsAreComparedByTheirTexts) {
    Project one;
    Project other;
    other.RegVar[0].width = "8";
    EXPECT_FALSE(holdSame(one, other, named("RegVar1"), *fieldOf("RegVar1", "width")));
    EXPECT_TRUE(holdSame(one, other, named("RegVar1"), *fieldOf("RegVar1", "precision")));
    EXPECT_TRUE(holdSame(one, other, named("RegVar2"), *fieldOf("RegVar2", "width")));
}

TEST(CellText, OfANumberIsWithoutTheBlanksAndTabsAroundIt) {
    for (const char* cell : {"5", "5\t", "\t5", " 5 ", "\t 5 \t", "05", "0005"})
        EXPECT_EQ(taken("RegVar1", "width", cell), "5") << cell;
    EXPECT_EQ(taken("RegVar1", "default", "\t12.50 "), "12.50");
    EXPECT_EQ(taken("RegVar1", "precision", " 0\t"), "0");
    EXPECT_EQ(taken("CoilVar1", "default", "\t1"), "1");
}

TEST(CellText, OfANumberIsJudgedByItsRange) {
    EXPECT_EQ(taken("RegVar1", "width", "2"), "2");
    EXPECT_EQ(taken("RegVar1", "width", "8"), "8");
    EXPECT_EQ(taken("RegVar1", "width", "1"), "! \"1\" is not a number from 2 to 8");
    EXPECT_EQ(taken("RegVar1", "width", " 9\t"), "! \"9\" is not a number from 2 to 8");
    EXPECT_EQ(taken("RegVar1", "width", "5 5"), "! \"5 5\" is not a number from 2 to 8");
    EXPECT_EQ(taken("RegVar1", "precision", "3"), "3");
    EXPECT_EQ(taken("RegVar1", "precision", "4"), "! \"4\" is not a number from 0 to 3");
    EXPECT_EQ(taken("RegVar1", "precision", "-1"), "! \"-1\" is not a number from 0 to 3");
    EXPECT_EQ(taken("RegVar1", "default", "7,5"), "! \"7,5\" is not a number");
    EXPECT_EQ(taken("RegVar1", "default", "1e999"), "! \"1e999\" is not a number");
    EXPECT_EQ(taken("RegVar1", "default", "\xC2\xB5"), "! \"\xC2\xB5\" is not a number");
    EXPECT_EQ(taken("CoilVar1", "default", "2"), "! \"2\" is not 0 or 1");
    EXPECT_EQ(taken("CoilVar1", "default", "x"), "! \"x\" is not 0 or 1");
}

TEST(CellText, OfASwitchIsWrittenAsTheDisplayReadsIt) {
    EXPECT_EQ(taken("CoilVar1", "default", "1.0"), "1");
    EXPECT_EQ(taken("CoilVar1", "default", "00"), "0");
}

TEST(CellText, OfAnEmptyCellIsThatOfANewProject) {
    EXPECT_EQ(taken("RegVar1", "default", ""), "0.0");
    EXPECT_EQ(taken("RegVar1", "width", " \t"), "7");
    EXPECT_EQ(taken("RegVar1", "precision", ""), "3");
    EXPECT_EQ(taken("CoilVar1", "default", ""), "0");
    EXPECT_EQ(taken("CoilVar1", "on", ""), "");
    EXPECT_EQ(taken("STDMSG1", "script", ""), "CLEAR");
}

TEST(CellText, OfATextIsKeptByteForByte) {
    EXPECT_EQ(taken("CoilVar1", "on", " \xE2\x82\xAC\t"), " \x80\t");
    EXPECT_EQ(taken("CoilVar1", "off", "a\nb"), "! the text is one line");
    EXPECT_EQ(taken("CoilVar1", "off", "a\rb"), "! the text is one line");
    EXPECT_EQ(taken("CoilVar1", "off", "\xCE\x93"), "! \"\xCE\x93\" is not a character of the display");
    EXPECT_EQ(taken("STDMSG1", "script", "a\nb\rc\r\n"), "a\r\nb\r\nc\r\n");
    EXPECT_EQ(taken("STDMSG1", "script", "\xCE\x93"), "! \"\xCE\x93\" is not a character of the display");
}

TEST(CellText, SaysTheSameWhereBytesOrNumbersAre) {
    const Field& width = *fieldOf("RegVar1", "width");
    EXPECT_TRUE(isEquivalent(width, "x", "x"));
    EXPECT_TRUE(isEquivalent(width, "7.0", "7"));
    EXPECT_TRUE(isEquivalent(width, "\t7", " 7 "));
    EXPECT_FALSE(isEquivalent(width, "7", "8"));
    EXPECT_FALSE(isEquivalent(width, "x", "y"));
    EXPECT_FALSE(isEquivalent(*fieldOf("CoilVar1", "on"), "7.0", "7"));
    EXPECT_TRUE(isEquivalent(*fieldOf("CoilVar1", "on"), "\xE2\x82\xAC", "\x80"));
}

} // namespace
} // namespace orvista
