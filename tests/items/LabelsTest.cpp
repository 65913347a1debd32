#include "items/Labels.h"

#include <gtest/gtest.h>

#include <string>

namespace orvista {
namespace {

TEST(Labels, AreNamesOfProgramsVariables) {
    for (const char* const label : {"", "TankLevel", "_t1", "a", "Tank_level_2", "Regular41", "STDMSG0"})
        EXPECT_EQ(labelFault(label), "") << label;
    EXPECT_EQ(labelFault(std::string(40, 'x')), "");
    EXPECT_EQ(labelFault(std::string(41, 'x')), "is longer than 40 characters");
}

TEST(Labels, SayWhatIsWrong) {
    EXPECT_EQ(labelFault("1st"), "begins with no letter or _");
    EXPECT_EQ(labelFault("Tank level"), "holds something else than letters A to Z, digits and _");
    EXPECT_EQ(labelFault("F\xC3\xBCllstand"), "holds something else than letters A to Z, digits and _");
    EXPECT_EQ(labelFault("Tank__level"), "has two _ together");
    EXPECT_EQ(labelFault("Tank_"), "ends in _");
    EXPECT_EQ(labelFault("_"), "ends in _");
}

TEST(Labels, AreNoWordsOfTheStandardInAnyCase) {
    for (const char* const word : {"REAL", "real", "Var_Global", "XOR", "ABS", "ton", "R_TRIG", "s"})
        EXPECT_EQ(labelFault(word), "is a word that IEC 61131-3 keeps for itself") << word;
    EXPECT_FALSE(isReservedWord("Tank"));
}

TEST(Labels, AreNoItemsNamesInAnyCase) {
    EXPECT_EQ(labelFault("stdmsg3"), "is the name of STDMSG3");
    EXPECT_EQ(labelFault("RegVar012"), "is the name of RegVar12");
    EXPECT_EQ(labelFault("Regular3"), "is the name of STDMSG3");
    EXPECT_EQ(labelFault("EMERGENCY20"), "is the name of ALTMSG20");
}

} // namespace
} // namespace orvista
