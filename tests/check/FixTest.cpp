#include "check/Fix.h"

#include "tests/support/NamedItem.h"

#include <gtest/gtest.h>

/// Where the lines of a message are after a fix.
namespace orvista {
namespace {

FixEdit edited(std::size_t line, std::size_t column, std::size_t length, std::string text) {
    return {named("STDMSG1"), line, column, length, nullptr, std::move(text)};
}

/// Of a message of the lines "ab", "cd", "ef" and "gh".
std::optional<std::size_t> movedLine(const FixEdit& edit, std::size_t line) {
    Project project;
    project.STDMSG[0] = "ab\r\ncd\nef\rgh";
    return lineAfter(project, {"", {edit}}, named("STDMSG1"), line);
}

TEST(LineAfterAFix, IsTheSameWhereNoLineCameOrWent) {
    EXPECT_EQ(movedLine(edited(1, 2, 0, "S"), 3), 3U);
    EXPECT_EQ(movedLine(edited(1, 1, 2, "x"), 3), 3U);
    EXPECT_EQ(movedLine(edited(1, 1, 2, ""), 3), 3U);
    EXPECT_EQ(movedLine(edited(3, 1, 1, "a\r\nb"), 3), 3U);
    EXPECT_EQ(movedLine(edited(4, 1, 0, "a\r\nb\r\n"), 3), 3U);
    EXPECT_EQ(movedLine(edited(1, 2, 0, "S"), 0), 0U);
}

TEST(LineAfterAFix, CountsTheLineEndsBeforeIt) {
    EXPECT_EQ(movedLine(edited(1, 3, 0, "\r\nx"), 2), 3U);
    EXPECT_EQ(movedLine(edited(1, 1, 0, "x\r\ny\nz\r"), 3), 6U);
    EXPECT_EQ(movedLine(edited(1, 1, 0, "\r\n"), 2), 3U);
    EXPECT_EQ(movedLine(edited(1, 1, 4, ""), 2), 1U);
    EXPECT_EQ(movedLine(edited(1, 1, 7, ""), 3), 1U);
    EXPECT_EQ(movedLine(edited(1, 3, 3, ""), 3), 2U);
    EXPECT_EQ(movedLine(edited(1, 3, 3, "\r\n"), 3), 3U);
}

TEST(LineAfterAFix, IsNoneWhereItGoes) {
    EXPECT_EQ(movedLine(edited(2, 1, 2, ""), 2), std::nullopt);
    EXPECT_EQ(movedLine(edited(2, 1, 3, ""), 2), std::nullopt);
    EXPECT_EQ(movedLine(edited(1, 3, 4, ""), 2), std::nullopt);
    EXPECT_EQ(movedLine(edited(2, 1, 1, ""), 2), 2U);
    EXPECT_EQ(movedLine(edited(2, 2, 1, ""), 2), 2U);
    EXPECT_EQ(movedLine(edited(2, 1, 2, "x"), 2), 2U);
}

} // namespace
} // namespace orvista
