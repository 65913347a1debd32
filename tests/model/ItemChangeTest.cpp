#include "model/ItemChange.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <utility>

namespace orvista {
namespace {

TEST(ItemState, TellsWhatAnItemHolds) {
    Project project;
    project.STDMSG[11] = "CLEAR\r\nSTILL 500";
    project.ALTMSG[19] = "x";
    project.RegVar[5].defaultValue = "1.5";
    project.CoilVar[31].onText = "AUF";
    project.AlertMessage = 500;
    EXPECT_EQ(itemState(project, "STDMSG12"), (ItemState{"STDMSG12", "CLEAR\r\nSTILL 500"}));
    EXPECT_EQ(itemState(project, "altmsg20"), (ItemState{"ALTMSG20", "x"}));
    EXPECT_EQ(itemState(project, "RegVar6"),
              (ItemState{"RegVar6", FloatVariable{"RegVar6", "1.5", "7", "3"}}));
    EXPECT_EQ(itemState(project, "CoilVar32"),
              (ItemState{"CoilVar32", BooleanVariable{"CoilVar32", "0", "AUF", "OFF"}}));
    EXPECT_EQ(itemState(project, addressMapName),
              (ItemState{addressMapName, AddressMap{100, 100, 500, 320}}));
}

TEST(ItemState, NamesNoItemForOtherTexts) {
    const Project project;
    for (const char* name : {"", "STDMSG41", "STDMSG0", "RegVar65", "ADDRESS MAP", "nothing"})
        EXPECT_THROW(itemState(project, name), std::out_of_range) << name;
    Project other;
    EXPECT_THROW(setItem(other, {"STDMSG41", "x"}), std::out_of_range);
    EXPECT_THROW(setItem(other, {"STDMSG4", AddressMap{}}), std::bad_variant_access);
    EXPECT_THROW(setItem(other, {addressMapName, "x"}), std::bad_variant_access);
}

TEST(ItemState, SettingAnItemLeavesTheOthersAndTheNameOfItsPlace) {
    Project project;
    const Project before = project;
    setItem(project, {"RegVar6", FloatVariable{"RegVar2", "9", "5", "1"}});
    setItem(project, {"CoilVar1", BooleanVariable{"", "1", "A", "B"}});
    setItem(project, {"ALTMSG1", "STILL 1"});
    setItem(project, {addressMapName, AddressMap{1, 2, 3, 4}});
    EXPECT_EQ(project.RegVar[5], (FloatVariable{"RegVar6", "9", "5", "1"}));
    EXPECT_EQ(project.CoilVar[0], (BooleanVariable{"CoilVar1", "1", "A", "B"}));
    EXPECT_EQ(project.ALTMSG[0], "STILL 1");
    EXPECT_EQ(project.AnalogInput, 1);
    EXPECT_EQ(project.DigitalInput, 2);
    EXPECT_EQ(project.AlertMessage, 3);
    EXPECT_EQ(project.RegularMessage, 4);
    EXPECT_EQ(project.STDMSG, before.STDMSG);
    EXPECT_EQ(project.RegVar[1], before.RegVar[1]);
}

/// Applies a change of STDMSG3 from one script to another, and takes it back.
void goThereAndBack(const std::string& before, const std::string& after) {
    Project project;
    project.STDMSG[2] = before;
    const ItemChange change(itemState(project, "STDMSG3"), after);
    EXPECT_EQ(change.changesNothing(), before == after);
    change.apply(project);
    EXPECT_EQ(project.STDMSG[2], after) << "from " << before;
    change.revert(project);
    EXPECT_EQ(project.STDMSG[2], before) << "back from " << after;
}

TEST(ItemChange, OfAScriptGoesThereAndBack) {
    const std::pair<std::string, std::string> pairs[] = {
        {"CLEAR", "CLEAR"}, {"", "CLEAR"},    {"CLEAR", ""},      {"aa", "aaa"},
        {"aaa", "aa"},      {"abcd", "abXd"}, {"abab", "ab"},     {"one\r\ntwo", "one\r\nand\r\ntwo"},
        {"abc", "xyz"},     {"", ""},         {"x", "xx"},        {std::string(1, '\0'), "\x81"},
        {"abcabc", "abc"},  {"abc", "cba"},   {"aXbXc", "aYbYc"}, {"the end", "the very end"}};
    for (const auto& [before, after] : pairs)
        goThereAndBack(before, after);
}

TEST(ItemChange, OfAVariableAndOfTheAddressesGoesThereAndBack) {
    Project project;
    const Project before = project;
    const ItemChange number(itemState(project, "RegVar6"), FloatVariable{"RegVar1", "9", "5", "1"});
    const ItemChange coil(itemState(project, "CoilVar2"), BooleanVariable{"", "1", "A", "B"});
    const ItemChange map(itemState(project, addressMapName), AddressMap{1, 2, 3, 4});
    for (const ItemChange* change : {&number, &coil, &map}) {
        EXPECT_FALSE(change->changesNothing());
        change->apply(project);
    }
    EXPECT_EQ(project.RegVar[5], (FloatVariable{"RegVar6", "9", "5", "1"}));
    EXPECT_EQ(project.CoilVar[1], (BooleanVariable{"CoilVar2", "1", "A", "B"}));
    EXPECT_EQ(project.RegularMessage, 4);
    for (const ItemChange* change : {&number, &coil, &map})
        change->revert(project);
    EXPECT_EQ(project.RegVar, before.RegVar);
    EXPECT_EQ(project.CoilVar, before.CoilVar);
    EXPECT_EQ(project.RegularMessage, before.RegularMessage);
}

TEST(ItemChange, TakesAnotherNameForNoChange) {
    const Project project;
    EXPECT_TRUE(ItemChange(itemState(project, "RegVar6"), project.RegVar[0]).changesNothing());
    EXPECT_TRUE(ItemChange(itemState(project, "CoilVar6"), project.CoilVar[0]).changesNothing());
}

TEST(ItemChange, RefusesAValueOfAnotherKind) {
    const Project project;
    EXPECT_THROW(ItemChange(itemState(project, "RegVar6"), project.CoilVar[0]), std::bad_variant_access);
}

TEST(ItemChange, KeepsOnlyWhatDiffersOfALongScript) {
    Project project;
    project.STDMSG[0] = std::string(1 << 20, 'a') + "old" + std::string(1 << 20, 'b');
    const std::string after = std::string(1 << 20, 'a') + "newer" + std::string(1 << 20, 'b');
    const ItemChange change(itemState(project, "STDMSG1"), after);
    EXPECT_LT(change.bytes(), 1024U);
    change.apply(project);
    EXPECT_EQ(project.STDMSG[0], after);
}

} // namespace
} // namespace orvista
