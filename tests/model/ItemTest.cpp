#include "model/Item.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <utility>

namespace orvista {
namespace {

TEST(Item, NamesAndKeysCountFromOne) {
    EXPECT_EQ(nameOf({Kind::Float, 0}), "RegVar1");
    EXPECT_EQ(nameOf({Kind::Float, 63}), "RegVar64");
    EXPECT_EQ(nameOf({Kind::Boolean, 31}), "CoilVar32");
    EXPECT_EQ(nameOf({Kind::Emergency, 19}), "ALTMSG20");
    EXPECT_EQ(nameOf({Kind::Regular, 39}), "STDMSG40");
    EXPECT_EQ(nameOf({}), "address map");
    EXPECT_EQ(keyOf({Kind::Float, 63}), "F64");
    EXPECT_EQ(keyOf({Kind::Boolean, 0}), "B1");
    EXPECT_EQ(keyOf({Kind::Emergency, 19}), "E20");
    EXPECT_EQ(keyOf({Kind::Regular, 6}), "R7");
    EXPECT_EQ(keyOf({}), "");
}

TEST(Item, TreesNameMessagesInWords) {
    EXPECT_EQ(treeNameOf({Kind::Float, 0}), "RegVar1");
    EXPECT_EQ(treeNameOf({Kind::Boolean, 31}), "CoilVar32");
    EXPECT_EQ(treeNameOf({Kind::Regular, 0}), "Regular1");
    EXPECT_EQ(treeNameOf({Kind::Emergency, 19}), "Emergency20");
    for (const Item item : allMessages())
        EXPECT_EQ(itemWritten(treeNameOf(item)), item);
    for (const char* name : {"Regular", "Regular0", "Regular41", "Emergency21", "Regular 1"})
        EXPECT_EQ(itemWritten(name), std::nullopt) << name;
}

TEST(Item, EveryNameAndKeyLeadsBackToItsItem) {
    std::set<std::string> names;
    for (const Item item : allItems()) {
        EXPECT_EQ(itemNamed(nameOf(item)), item);
        EXPECT_TRUE(names.insert(nameOf(item)).second);
        if (item.kind != Kind::AddressMap) {
            EXPECT_EQ(itemOfKey(keyOf(item)), item);
        }
    }
    EXPECT_EQ(names.size(), 157U);
}

TEST(Item, NamesAreReadInAnyCaseAndWithLeadingZeros) {
    EXPECT_EQ(itemNamed("REGVAR7"), Item(Kind::Float, 6));
    EXPECT_EQ(itemNamed("regvar007"), Item(Kind::Float, 6));
    EXPECT_EQ(itemNamed("StdMsg40"), Item(Kind::Regular, 39));
    EXPECT_EQ(itemNamed("altmsg20"), Item(Kind::Emergency, 19));
}

TEST(Item, OtherTextsNameNoItem) {
    for (const char* name : {"", "RegVar", "RegVar0", "RegVar65", "RegVar-1", "RegVar+1", "RegVar 1",
                             "RegVar1 ", " RegVar1", "RegVar1x", "RegVar99999999999999999999", "CoilVar33",
                             "STDMSG41", "ALTMSG21", "Address Map", "address map ", "nothing"})
        EXPECT_EQ(itemNamed(name), std::nullopt) << name;
}

TEST(Item, KeysOfGroupsAndInAnotherCaseNameNoItem) {
    for (const char* key : {"", "R", "r1", "R0", "R41", "REGULAR", "EMERGENCY", "REGISTER", "COIL", "ROOT",
                            "E21", "F65", "B33"})
        EXPECT_EQ(itemOfKey(key), std::nullopt) << key;
}

TEST(Item, MessagesAndVariablesAreToldApart) {
    EXPECT_EQ(messageNamed("ALTMSG2"), Item(Kind::Emergency, 1));
    EXPECT_EQ(messageNamed("STDMSG2"), Item(Kind::Regular, 1));
    EXPECT_EQ(messageNamed("RegVar2"), std::nullopt);
    EXPECT_EQ(messageNamed("CoilVar2"), std::nullopt);
    EXPECT_EQ(messageNamed("address map"), std::nullopt);
    EXPECT_EQ(variableNamed("RegVar2"), Item(Kind::Float, 1));
    EXPECT_EQ(variableNamed("CoilVar2"), Item(Kind::Boolean, 1));
    EXPECT_EQ(variableNamed("ALTMSG2"), std::nullopt);
    EXPECT_EQ(variableNamed("address map"), std::nullopt);
    EXPECT_EQ(notAMessage("x"), "x is not a message; there are STDMSG1 to STDMSG40 and ALTMSG1 to ALTMSG20");
    EXPECT_EQ(notAVariable("x"),
              "x is not a variable; there are RegVar1 to RegVar64 and CoilVar1 to CoilVar32");
}

TEST(Item, ItemsStandInTheOrderOfTheProjectsTables) {
    EXPECT_EQ(allItems().size(), 157U);
    EXPECT_TRUE(std::ranges::is_sorted(allItems()));
    EXPECT_EQ(allItems().front(), Item());
    EXPECT_EQ(allVariables().size(), 96U);
    EXPECT_EQ(allVariables()[63], Item(Kind::Float, 63));
    EXPECT_EQ(allVariables()[64], Item(Kind::Boolean, 0));
    EXPECT_EQ(allMessages().size(), 60U);
    EXPECT_EQ(allMessages()[39], Item(Kind::Regular, 39));
    EXPECT_EQ(allMessages()[40], Item(Kind::Emergency, 0));
}

TEST(Item, AddressesFollowFromTheStartOfTheBlock) {
    Project project;
    EXPECT_EQ(addressOf(project, {Kind::Float, 0}), 100);
    EXPECT_EQ(addressOf(project, {Kind::Float, 63}), 226);
    EXPECT_EQ(addressOf(project, {Kind::Boolean, 31}), 131);
    EXPECT_EQ(addressOf(project, {Kind::Emergency, 19}), 319);
    EXPECT_EQ(addressOf(project, {Kind::Regular, 39}), 359);
    project.AnalogInput = 2'147'483'647;
    EXPECT_EQ(addressOf(project, {Kind::Float, 63}), 2'147'483'773);
    project.RegularMessage = -5;
    EXPECT_EQ(addressOf(project, {Kind::Regular, 4}), -1);
}

} // namespace
} // namespace orvista
