#include "model/Text.h"

#include <gtest/gtest.h>

namespace orvista {
namespace {

TEST(Text, TrimsBlanksOnly) {
    EXPECT_EQ(trimBlanks("  a b  "), "a b");
    EXPECT_EQ(trimBlanks("   "), "");
    EXPECT_EQ(trimBlanks(""), "");
    EXPECT_EQ(trimBlanks(" \ta\t "), "\ta\t");
    EXPECT_EQ(trimBlanks(" \xA0"
                         "a\xA0 "),
              "\xA0"
              "a\xA0");
    EXPECT_EQ(trimLeadingBlanks("  a "), "a ");
}

TEST(Text, FoldsAsciiLettersOnly) {
    EXPECT_EQ(upperAscii("az\xE4{`"), "AZ\xE4{`");
    EXPECT_EQ(lowerAscii("AZ\xC4[@"), "az\xC4[@");
    EXPECT_TRUE(equalsIgnoringCase("EndVar", "ENDVAR"));
    EXPECT_FALSE(equalsIgnoringCase("\xE4", "\xC4"));
    EXPECT_FALSE(equalsIgnoringCase("ENDVARS", "ENDVAR"));
    EXPECT_TRUE(startsWithIgnoringCase("defmsgX", "DEFMSG"));
    EXPECT_FALSE(startsWithIgnoringCase("DEFMS", "DEFMSG"));
    EXPECT_TRUE(endsWithIgnoringCase("PLANT.ORX", ".orx"));
    EXPECT_FALSE(endsWithIgnoringCase("orx", ".orx"));
}

TEST(Text, TellsWhatTwoTextsHaveInCommon) {
    EXPECT_EQ(sameAtStart("", "a"), 0U);
    EXPECT_EQ(sameAtStart("level", "lever"), 4U);
    EXPECT_EQ(sameAtStart("level", "level 2"), 5U);
    EXPECT_EQ(sameAtEnd("a", ""), 0U);
    EXPECT_EQ(sameAtEnd("flow", "slow"), 3U);
    EXPECT_EQ(sameAtEnd("my flow", "flow"), 4U);
}

TEST(Text, TellsWhatTwoLongTextsHaveInCommonAtEachPlace) {
    const std::string text(600, 'x');
    for (std::size_t differs = 0; differs < text.size(); ++differs) {
        std::string other = text;
        other[differs] = 'y';
        ASSERT_EQ(sameAtStart(text, other), differs);
        ASSERT_EQ(sameAtEnd(text, other), text.size() - differs - 1);
    }
    EXPECT_EQ(sameAtStart(text, text), text.size());
    EXPECT_EQ(sameAtEnd(text, text + text), text.size());
}

TEST(IsAllDigits, PassesNonEmptyDigitsOnly) {
    using GenenalModule::IsAllDigits;
    EXPECT_TRUE(IsAllDigits("0"));
    EXPECT_TRUE(IsAllDigits("00123456789"));
    for (const char* text : {"", " 1", "1 ", "-1", "+1", "1.0", "1,000", "1x", "\xB2"})
        EXPECT_FALSE(IsAllDigits(text)) << text;
}

} // namespace
} // namespace orvista
