#include "model/ItemKind.h"

#include <gtest/gtest.h>

namespace orvista {
namespace {

TEST(ItemKind, NamesAndKeysCountFromOne) {
    EXPECT_EQ(floatVariables.name(0), "RegVar1");
    EXPECT_EQ(floatVariables.name(63), "RegVar64");
    EXPECT_EQ(booleanVariables.name(31), "CoilVar32");
    EXPECT_EQ(emergencyMessages.name(19), "ALTMSG20");
    EXPECT_EQ(regularMessages.name(39), "STDMSG40");
    EXPECT_EQ(floatVariables.key(63), "F64");
    EXPECT_EQ(booleanVariables.key(0), "B1");
    EXPECT_EQ(emergencyMessages.key(19), "E20");
    EXPECT_EQ(regularMessages.key(6), "R7");
}

TEST(ItemKind, EveryNameAndKeyLeadsBackToItsIndex) {
    for (const ItemKind& kind : {floatVariables, booleanVariables, emergencyMessages, regularMessages}) {
        for (std::size_t index = 0; index < kind.count; ++index) {
            EXPECT_EQ(kind.indexOfName(kind.name(index)), index) << kind.name(index);
            EXPECT_EQ(kind.indexOfKey(kind.key(index)), index) << kind.key(index);
        }
        EXPECT_EQ(kind.indexOfName(kind.name(kind.count)), std::nullopt);
        EXPECT_EQ(kind.indexOfKey(kind.key(kind.count)), std::nullopt);
    }
}

TEST(ItemKind, NamesAreReadInAnyCaseAndWithLeadingZeros) {
    EXPECT_EQ(floatVariables.indexOfName("REGVAR7"), 6U);
    EXPECT_EQ(floatVariables.indexOfName("regvar007"), 6U);
    EXPECT_EQ(regularMessages.indexOfName("StdMsg40"), 39U);
}

TEST(ItemKind, OtherTextsNameNoItem) {
    for (const char* name :
         {"", "RegVar", "RegVar0", "RegVar65", "RegVar-1", "RegVar+1", "RegVar 1", "RegVar1 ", "RegVar1x",
          "RegVar1.0", "CoilVar1", "Var1", "RegVar18446744073709551617", "RegVar99999999999999999999"})
        EXPECT_EQ(floatVariables.indexOfName(name), std::nullopt) << name;
}

TEST(ItemKind, KeysOfGroupsAndInAnotherCaseNameNoItem) {
    for (const char* key : {"", "R", "r1", "REGULAR", "E1", "R0", "R41", "R1x"})
        EXPECT_EQ(regularMessages.indexOfKey(key), std::nullopt) << key;
}

TEST(ItemKind, AddressesFollowFromTheStartOfTheBlock) {
    Project project;
    EXPECT_EQ(floatVariables.address(project, 0), 100);
    EXPECT_EQ(floatVariables.address(project, 63), 226);
    EXPECT_EQ(booleanVariables.address(project, 31), 131);
    EXPECT_EQ(emergencyMessages.address(project, 19), 319);
    EXPECT_EQ(regularMessages.address(project, 39), 359);
    project.AnalogInput = 2'147'483'647;
    EXPECT_EQ(floatVariables.address(project, 63), 2'147'483'773);
    project.RegularMessage = -5;
    EXPECT_EQ(regularMessages.address(project, 4), -1);
}

} // namespace
} // namespace orvista
