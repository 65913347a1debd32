#include "model/Utf8.h"

#include <gtest/gtest.h>

#include <string>

namespace orvista {
namespace {

std::string written(char32_t character) {
    std::string utf8;
    appendUtf8(utf8, character);
    return utf8;
}

TEST(Utf8, CharactersHaveOneToFourUnits) {
    EXPECT_EQ(utf8CharacterLength(""), 0U);
    EXPECT_EQ(utf8CharacterLength("\x7F\x7F"), 1U);
    EXPECT_EQ(utf8CharacterLength("\xC2\x80\x80"), 2U);
    EXPECT_EQ(utf8CharacterLength("\xDF\xBF"), 2U);
    EXPECT_EQ(utf8CharacterLength("\xEF\xBF\xBF"), 3U);
    EXPECT_EQ(utf8CharacterLength("\xF0\x90\x80\x80"), 4U);
}

TEST(Utf8, TheSecondUnitHasLimitsOfItsOwn) {
    for (const char* whole : {"\xE0\xA0\x80", "\xE0\xBF\xBF", "\xE1\x80\x80", "\xEC\xBF\xBF", "\xED\x80\x80",
                              "\xED\x9F\xBF", "\xEE\x80\x80", "\xF0\xBF\xBF\xBF", "\xF1\x80\x80\x80",
                              "\xF3\xBF\xBF\xBF", "\xF4\x80\x80\x80", "\xF4\x8F\xBF\xBF"})
        EXPECT_TRUE(isUtf8(whole)) << testing::PrintToString(whole);
    for (const char* other :
         {"\x80", "\xBF", "\xC1\xBF", "\xC2\x7F", "\xC2\xC0", "\xE0\x9F\xBF", "\xE1\x7F\x80", "\xE1\xC0\x80",
          "\xED\xA0\x80", "\xEE\x7F\x80", "\xF0\x8F\xBF\xBF", "\xF1\x7F\x80\x80", "\xF1\xC0\x80\x80",
          "\xF4\x90\x80\x80", "\xF5\x80\x80\x80"})
        EXPECT_FALSE(isUtf8(other)) << testing::PrintToString(other);
}

TEST(Utf8, TheUnitsAfterTheSecondAllHaveTheSameLimits) {
    for (const char* other : {"\xE0\xA0\x7F", "\xE0\xA0\xC0", "\xED\x9F\x7F", "\xF4\x8F\x7F\xBF",
                              "\xF4\x8F\xBF\x7F", "\xF4\x8F\xBF\xC0"})
        EXPECT_FALSE(isUtf8(other)) << testing::PrintToString(other);
}

TEST(Utf8, AFaultIsAsLongAsWhatBeginsACharacter) {
    EXPECT_EQ(utf8FaultLength("\x80\x80"), 1U);
    EXPECT_EQ(utf8FaultLength("\xC2"), 1U);
    EXPECT_EQ(utf8FaultLength("\xE1\x7F"), 1U);
    EXPECT_EQ(utf8FaultLength("\xE1\x80\x7F"), 2U);
    EXPECT_EQ(utf8FaultLength("\xF4\x8F\xBF"), 3U);
    EXPECT_EQ(utf8FaultLength("\xF4\x90\x80\x80"), 1U);
}

TEST(Utf8, IsWrittenInTheShortestForm) {
    EXPECT_EQ(written(0x00), std::string(1, '\0'));
    EXPECT_EQ(written(0x7F), "\x7F");
    EXPECT_EQ(written(0x80), "\xC2\x80");
    EXPECT_EQ(written(0x7FF), "\xDF\xBF");
    EXPECT_EQ(written(0x800), "\xE0\xA0\x80");
    EXPECT_EQ(written(0xFFFF), "\xEF\xBF\xBF");
    EXPECT_EQ(written(0x10000), "\xF0\x90\x80\x80");
    EXPECT_EQ(written(0x10FFFF), "\xF4\x8F\xBF\xBF");
}

} // namespace
} // namespace orvista
