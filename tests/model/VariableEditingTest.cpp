#include "model/VariableEditing.h"

#include "model/Numbers.h"

#include <gtest/gtest.h>

#include <string>

namespace orvista {
namespace {

TEST(VariableLists, StandInTheirOrder) {
    EXPECT_EQ(widthChoices, (std::array<const char*, 7>{"3", "4", "5", "6", "7", "8", "2"}));
    EXPECT_EQ(precisionChoices, (std::array<const char*, 4>{"1", "2", "3", "0"}));
    EXPECT_STREQ(widthChoices[initialWidthPosition], "5");
    EXPECT_STREQ(precisionChoices[initialPrecisionPosition], "3");
    EXPECT_STREQ(booleanDefaultChoices[initialBooleanDefaultPosition], "0");
}

TEST(VariableLists, FindStoredTexts) {
    EXPECT_EQ(widthPosition("3"), 0U);
    EXPECT_EQ(widthPosition("8"), 5U);
    EXPECT_EQ(widthPosition("2"), 6U);
    EXPECT_EQ(precisionPosition("1"), 0U);
    EXPECT_EQ(precisionPosition("0"), 3U);
    EXPECT_EQ(booleanDefaultPosition("0"), 0U);
    EXPECT_EQ(booleanDefaultPosition("1"), 1U);
}

TEST(VariableLists, FallBackForOtherTexts) {
    for (const char* text : {"9", "", " 3", "03", "3.0", "abc"})
        EXPECT_STREQ(widthChoices[widthPosition(text)], "7") << text;
    for (const char* text : {"5", "", "1 ", "00"})
        EXPECT_STREQ(precisionChoices[precisionPosition(text)], "3") << text;
    for (const char* text : {"2", "", "-1", "01", "True"})
        EXPECT_STREQ(booleanDefaultChoices[booleanDefaultPosition(text)], "0") << text;
}

TEST(VariableWidth, TwoLeavesNoRoomForDecimals) {
    for (const char* precision : precisionChoices)
        EXPECT_EQ(precisionForWidth("2", precision), "0");
}

TEST(VariableWidth, EightNeedsADecimal) {
    EXPECT_EQ(precisionForWidth("8", "0"), "1");
    EXPECT_EQ(precisionForWidth("8", "1"), "1");
    EXPECT_EQ(precisionForWidth("8", "2"), "2");
    EXPECT_EQ(precisionForWidth("8", "3"), "3");
}

TEST(VariableWidth, OthersStayAsChosen) {
    for (const char* width : {"3", "4", "5", "6", "7"})
        for (const char* precision : precisionChoices)
            EXPECT_EQ(precisionForWidth(width, precision), precision) << width;
}

TEST(VariableDefault, IsTheLeadingNumberInShortestForm) {
    EXPECT_EQ(normalisedDefault("12abc"), "12");
    EXPECT_EQ(normalisedDefault("abc"), "0");
    EXPECT_EQ(normalisedDefault(""), "0");
    EXPECT_EQ(normalisedDefault(" 1.50"), "1.5");
    EXPECT_EQ(normalisedDefault("-3"), "-3");
    EXPECT_EQ(normalisedDefault("1e3"), "1000");
    EXPECT_EQ(normalisedDefault("0.0"), "0");
    EXPECT_EQ(normalisedDefault("-0.0"), "0");
    EXPECT_EQ(normalisedDefault("100000"), "100000");
    EXPECT_EQ(normalisedDefault(".5"), "0.5");
    EXPECT_EQ(normalisedDefault("1e-7"), "0.0000001");
    EXPECT_EQ(normalisedDefault("1,5"), "1");
}

TEST(VariableDefault, BeyondDoubleIsRefused) {
    EXPECT_THROW(normalisedDefault("1e309"), Overflow);
    EXPECT_THROW(normalisedDefault("-1e309"), Overflow);
}

} // namespace
} // namespace orvista
