#include "check/FixRun.h"
#include "display/BitmapProvider.h"
#include "tests/support/NamedItem.h"

#include <gtest/gtest.h>

/// Several fixes, and some of them.
namespace orvista {
namespace {

const std::string gapPage =
    "CLEAR\r\nTEXT 0 0 RED BLACK \"Level   m\"\r\nDISPVAR 48 0 GREEN BLACK RegVar1\r\n";
const std::string mendedPage =
    "CLEAR\r\nTEXT 0 0 RED BLACK \"Level        m\"\r\nDISPVAR 48 0 GREEN BLACK RegVar1\r\n";

class FixRunTest : public testing::Test {
protected:
    FixRunTest() {
        project_.STDMSG[0] = gapPage + gapPage + gapPage;
        project_.STDMSG[1] = gapPage;
        project_.CoilVar[0].defaultValue = "yes"; // which is not sure
        project_.CoilVar[1].defaultValue = "1.0";
    }

    /// The ticked ones of all.
    /// \returns the project after them; how many were tried is counted
    Project mendedSome(const std::vector<bool>& ticks, bool isOfThisProject = true) {
        Fixing before(project_, bitmaps_, 128);
        const auto all = mendEverything(before, [](std::size_t) { return true; });
        EXPECT_EQ(all.size(), ticks.size());
        Fixing fixing(project_, bitmaps_, 128);
        tried_ = 0;
        EXPECT_TRUE(
            mendSome(fixing, {all, ticks, isOfThisProject}, [&](std::size_t) { return ++tried_ > 0; }));
        return fixing.project();
    }

    Project project_;
    NoBitmaps bitmaps_;
    std::size_t tried_ = 0;
};

/// What is told of the lines when a message becomes another.
OldAndNew changedLines(const std::string& before, const std::string& after) {
    Project project;
    project.STDMSG[0] = after;
    return linesOf(project, trimmed({named("STDMSG1"), &scriptField(), before, after}));
}

TEST(ChangedLines, AreThoseThatDiffer) {
    const auto expect = [](const OldAndNew& lines, const std::string& before, const std::string& after) {
        EXPECT_EQ(lines.before, before);
        EXPECT_EQ(lines.after, after);
    };
    expect(changedLines("a\r\nbc\r\nd", "a\r\nbx\r\nd"), "bc", "bx");
    expect(changedLines("a\r\nd", "a\r\nb\r\nd"), "", "b");
    expect(changedLines("a\r\nb\r\nc\r\nd", "a\r\nd"), "b\r\nc", "");
    expect(changedLines("a\r\nb\r\nc\r\nd", "x\r\nb\r\nc\r\ny"), "a\r\nb\r\nc\r\nd", "x\r\nb\r\nc\r\ny");
    expect(changedLines("a", "a\r\nb"), "", "b");
    expect(changedLines("a\nb", "a\n\nb"), "", "");
}

TEST_F(FixRunTest, WhatWasTriedIsNotTriedAgain) {
    const Project mended = mendedSome({true, true, true, true, true, true});
    EXPECT_EQ(tried_, 0U);
    EXPECT_EQ(mended.STDMSG[0], mendedPage + mendedPage + mendedPage);
    EXPECT_EQ(mended.STDMSG[1], mendedPage);
    EXPECT_EQ(mended.CoilVar[1].defaultValue, "1");
}

TEST_F(FixRunTest, OnlyWhatMayDifferIsTriedAgain) {
    const Project mended = mendedSome({true, true, false, true, true, false});
    EXPECT_EQ(tried_, 2U);
    EXPECT_EQ(mended.STDMSG[0], mendedPage + gapPage + mendedPage);
    EXPECT_EQ(mended.STDMSG[1], mendedPage);
}

TEST_F(FixRunTest, InAnotherProjectAllIsTriedAgain) {
    const Project mended = mendedSome({true, true, true, true, true, false}, false);
    EXPECT_EQ(tried_, 5U);
    EXPECT_EQ(mended.STDMSG[0], mendedPage + mendedPage + mendedPage);
}

TEST_F(FixRunTest, TryingAgainCanBeStopped) {
    Fixing before(project_, bitmaps_, 128);
    const auto all = mendEverything(before, [](std::size_t) { return true; });
    Fixing fixing(project_, bitmaps_, 128);
    std::vector<bool> ticks(all.size(), true);
    EXPECT_FALSE(mendSome(fixing, {all, ticks, false}, [](std::size_t made) { return made < 2; }));
}

} // namespace
} // namespace orvista
