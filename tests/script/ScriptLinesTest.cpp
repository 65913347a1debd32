#include "script/ScriptLines.h"

#include <gtest/gtest.h>

namespace orvista {
namespace {

TEST(ScriptLines, AreThoseThatCountWithTheirNumbers) {
    ScriptLines lines("\r\n CLEAR \r\n\nA  b\rC\t");
    EXPECT_EQ(lines.next(), "CLEAR");
    EXPECT_EQ(lines.number(), 2U);
    EXPECT_EQ(lines.next(), "A  b");
    EXPECT_EQ(lines.number(), 4U);
    EXPECT_EQ(lines.next(), "C\t");
    EXPECT_EQ(lines.number(), 5U);
    EXPECT_EQ(lines.next(), "");
    EXPECT_EQ(lines.next(), "");
}

TEST(EquivalentScripts, DifferInBlanksAroundLinesEmptyLinesAndTheLastLineEndOnly) {
    EXPECT_TRUE(equivalent("CLEAR\r\nSTILL 5", "  CLEAR \r\n\r\nSTILL 5\r\n\r\n"));
    EXPECT_TRUE(equivalent("CLEAR\nSTILL 5", "CLEAR\rSTILL 5"));
    EXPECT_FALSE(equivalent("CLEAR\r\nSTILL 5", "CLEAR\r\nSTILL  5"));
    EXPECT_FALSE(equivalent("CLEAR\r\nTEXT", "CLEAR\r\nTEXT\r\nIN"));
    EXPECT_FALSE(equivalent("CLEAR", "clear"));
    EXPECT_FALSE(equivalent("CLEAR\t", "CLEAR"));
}

TEST(EquivalentScripts, TakeAnEmptyOneForClearAsWhichItIsWritten) {
    EXPECT_TRUE(equivalent("", "CLEAR\r\n"));
    EXPECT_FALSE(equivalent("", "\r\n"));
}

TEST(EquivalentScripts, CountEmptyPagesAtTheStartUnlessTheyAreLeftOut) {
    const std::string_view appended = "CLEAR\r\n\r\nCLEAR\r\nTEXT";
    EXPECT_FALSE(equivalent(appended, "CLEAR\r\nTEXT"));
    EXPECT_TRUE(equivalent(appended, "CLEAR\r\nTEXT", EmptyStart::IsLeftOut));
    EXPECT_TRUE(equivalent("CLEAR", "CLEAR\r\n\r\nCLEAR\r\n", EmptyStart::IsLeftOut));
    EXPECT_FALSE(equivalent("CLEAR\r\nA\r\nCLEAR", "CLEAR\r\nA", EmptyStart::IsLeftOut));
    EXPECT_FALSE(equivalent("CLEAR\r\nA\r\nCLEAR\r\nCLEAR", "CLEAR\r\nA\r\nCLEAR", EmptyStart::IsLeftOut));
}

} // namespace
} // namespace orvista
