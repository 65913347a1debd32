#include "model/Change.h"
#include "tests/support/NamedItem.h"

#include <gmock/gmock.h>

#include <array>
#include <string>
#include <utility>
#include <vector>

namespace orvista {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(Change, IsFoundFieldByField) {
    Project before;
    Project after;
    after.RegVar[5].width = "8";
    after.RegVar[5].precision = "1";
    after.CoilVar[31].onText = "AUF";
    after.AlertMessage = -5;
    after.ALTMSG[19] = "x";
    EXPECT_THAT(
        changesBetween(before, after, named("RegVar6")),
        ElementsAre(changed("RegVar6", "width", "7", "8"), changed("RegVar6", "precision", "3", "1")));
    EXPECT_THAT(changesBetween(before, after, named("CoilVar32")),
                ElementsAre(changed("CoilVar32", "on", "ON", "AUF")));
    EXPECT_THAT(changesBetween(before, after, named("address map")),
                ElementsAre(changed("address map", "AlertMessage", "300", "-5")));
    EXPECT_THAT(changesBetween(before, after, named("ALTMSG20")),
                ElementsAre(changed("ALTMSG20", "script", "CLEAR", "x")));
    EXPECT_THAT(changesBetween(before, after, named("RegVar7")), IsEmpty());
    // The name of a variable is its place's, and no field.
    after.RegVar[0].name = "else";
    EXPECT_THAT(changesBetween(before, after, named("RegVar1")), IsEmpty());
}

TEST(Change, IsMadeOfTextsThatTheItemDoesNotHoldYet) {
    Project project;
    std::vector<Change> changes;
    addChanges(changes, project, named("RegVar1"), std::array<std::string, 3>{"9", "7", "1"});
    EXPECT_THAT(changes, ElementsAre(changed("RegVar1", "default", "0.0", "9"),
                                     changed("RegVar1", "precision", "3", "1")));
    const std::array<std::string, 1> script{"STILL 1"};
    EXPECT_THAT(storeTexts(project, named("STDMSG3"), script),
                ElementsAre(changed("STDMSG3", "script", "CLEAR", "STILL 1")));
    EXPECT_EQ(project.STDMSG[2], "STILL 1");
    EXPECT_THAT(storeTexts(project, named("STDMSG3"), script), IsEmpty());
}

TEST(Change, NamesEachItemOnce) {
    EXPECT_THAT(
        itemsOf(std::vector{changed("RegVar6", "width", "7", "8"), changed("STDMSG1", "script", "", "x"),
                            changed("RegVar6", "precision", "3", "1")}),
        ElementsAre(named("RegVar6"), named("STDMSG1")));
}

/// Applies the part of a change of STDMSG3 from one script to another that differs, and takes it back.
void goThereAndBack(const std::string& before, const std::string& after) {
    Project project;
    project.STDMSG[2] = before;
    const std::vector changes{trimmed(scriptChange(project, "STDMSG3", after))};
    applyChanges(project, changes);
    EXPECT_EQ(project.STDMSG[2], after) << "from " << before;
    revertChanges(project, changes);
    EXPECT_EQ(project.STDMSG[2], before) << "back from " << after;
}

TEST(Change, OfAScriptGoesThereAndBack) {
    const std::pair<std::string, std::string> pairs[] = {
        {"CLEAR", "CLEAR"}, {"", "CLEAR"},    {"CLEAR", ""},      {"aa", "aaa"},
        {"aaa", "aa"},      {"abcd", "abXd"}, {"abab", "ab"},     {"one\r\ntwo", "one\r\nand\r\ntwo"},
        {"abc", "xyz"},     {"", ""},         {"x", "xx"},        {std::string(1, '\0'), "\x81"},
        {"abcabc", "abc"},  {"abc", "cba"},   {"aXbXc", "aYbYc"}, {"the end", "the very end"}};
    for (const auto& [before, after] : pairs)
        goThereAndBack(before, after);
}

TEST(Change, OfAVariableAndOfTheAddressesGoesThereAndBack) {
    Project project;
    const Project before = project;
    Project after;
    after.RegVar[5] = {"RegVar6", "9", "5", "1"};
    after.CoilVar[1] = {"CoilVar2", "1", "A", "B"};
    after.AnalogInput = 200; // one digit differs from 100
    after.RegularMessage = 4;
    std::vector<Change> changes;
    for (const Item item : allItems())
        for (const Change& change : changesBetween(before, after, item))
            changes.push_back(trimmed(change));
    EXPECT_EQ(changes.size(), 8U);
    applyChanges(project, changes);
    EXPECT_EQ(project.RegVar, after.RegVar);
    EXPECT_EQ(project.CoilVar, after.CoilVar);
    EXPECT_EQ(project.AnalogInput, 200);
    EXPECT_EQ(project.RegularMessage, 4);
    revertChanges(project, changes);
    EXPECT_EQ(project.RegVar, before.RegVar);
    EXPECT_EQ(project.CoilVar, before.CoilVar);
    EXPECT_EQ(project.AnalogInput, 100);
    EXPECT_EQ(project.RegularMessage, 320);
}

TEST(Change, KeepsOnlyWhatDiffersOfALongScript) {
    Project project;
    project.STDMSG[0] = std::string(1 << 20, 'a') + "old" + std::string(1 << 20, 'b');
    const std::string after = std::string(1 << 20, 'a') + "newer" + std::string(1 << 20, 'b');
    const std::vector changes{trimmed(scriptChange(project, "STDMSG1", after))};
    EXPECT_EQ(changes[0].before, "old");
    EXPECT_EQ(changes[0].after, "newer");
    EXPECT_LT(bytesOf(changes[0]), 1024U);
    applyChanges(project, changes);
    EXPECT_EQ(project.STDMSG[0], after);
}

} // namespace
} // namespace orvista
