#include "display/FirstSight.h"

#include "display/SettledPage.h"
#include "script/ScriptInterpreter.h"
#include "tests/support/LedText.h"

#include <gtest/gtest.h>

#include <string>

namespace orvista {
namespace {

using testing::ledText;

constexpr PanelSize panel{32};

std::string seenFirst(const std::string& script) {
    const Project project;
    return ledText(firstSight(script, panel, fieldFormats(project), defaultValues(project), NoBitmaps()));
}

std::string settled(const std::string& script, std::size_t page = 0) {
    const Project project;
    Programme programme(panel, fieldFormats(project));
    programme.add({}, script, NoBitmaps());
    return ledText(settledPage(programme, page, defaultValues(project)));
}

const std::string one = "CLEAR\nTEXT 0 0 RED BLACK \"one\"\nIN GO-LEFT 1 50\nACT STILL 1000\n";
const std::string two = "CLEAR\nTEXT 0 0 GREEN BLACK \"two\"\nACT STILL 1000\n";
const std::string timeless = "CLEAR\nTEXT 0 0 GREEN BLACK \"no\"\nACT STILL 0\n";

TEST(FirstSight, IsTheFirstPageThatLastsAsItIsInItsPlace) {
    EXPECT_EQ(seenFirst(one + two), settled(one));
    EXPECT_EQ(seenFirst("CLEAR\n\n" + timeless + two + one), settled(two));
}

TEST(FirstSight, IsTheLastPageWhereNoneLasts) {
    EXPECT_EQ(seenFirst(timeless), settled(timeless));
    EXPECT_EQ(seenFirst(timeless + "CLEAR"), settled("CLEAR"));
}

TEST(FirstSight, IsDarkWithoutAPage) {
    EXPECT_EQ(seenFirst(""), ledText(LedRaster(panel)));
    EXPECT_EQ(seenFirst("NONSENSE"), ledText(LedRaster(panel)));
}

std::string ofLine(const std::string& script, std::size_t line) {
    const Project project;
    const Programme programme = programmeOfLine(script, line, panel, fieldFormats(project), NoBitmaps());
    EXPECT_EQ(programme.pageCount(), 1U);
    return ledText(settledPage(programme, 0, defaultValues(project)));
}

TEST(ProgrammeOfLine, HasThePageThatALongerOneHasOnThatLine) {
    const std::string script = "REM\n" + one + two + timeless;
    const Project project;
    Programme whole(panel, fieldFormats(project));
    whole.add({}, script, NoBitmaps());
    for (std::size_t line = 1; line < 14; ++line)
        EXPECT_EQ(ofLine(script, line),
                  ledText(settledPage(whole, pageOfLine(whole, line), defaultValues(project))))
            << line;
}

TEST(ProgrammeOfLine, LooksForTheBitmapsOfThatPageOnly) {
    const Project project;
    const std::string script = "CLEAR\nIMG 0 0 RED BLACK a.bmp\nCLEAR\nIMG 0 0 RED BLACK b.bmp\n";
    const Programme programme = programmeOfLine(script, 4, panel, fieldFormats(project), NoBitmaps());
    ASSERT_EQ(programme.remarks().size(), 1U);
    EXPECT_NE(programme.remarks().front().text.find("b.bmp"), std::string::npos);
}

TEST(ProgrammeOfLine, IsEmptyWithoutAPage) {
    EXPECT_EQ(programmeOfLine("NONSENSE", 1, panel, {}, NoBitmaps()).pageCount(), 0U);
}

TEST(InterpretUntil, ReadsNoFurtherThanThePageWanted) {
    std::size_t asked = 0;
    const InterpretedScript read =
        interpretUntil(one + two + "NONSENSE\n" + one, [&](const ScriptPage& page) {
            ++asked;
            return page.firstLine == 5;
        });
    ASSERT_EQ(read.pages.size(), 2U);
    EXPECT_EQ(asked, 2U);
    EXPECT_EQ(read.pages[1].firstLine, 5U);
    EXPECT_EQ(read.pages[1].elements.size(), 1U);
    EXPECT_EQ(read.remarks.size(), 1U);
}

TEST(InterpretUntil, AsksAboutTheFirstPageToo) {
    const auto always = [](const ScriptPage&) { return true; };
    EXPECT_EQ(interpretUntil(one + two + one, always).pages.size(), 1U);
}

TEST(InterpretUntil, ReadsAllWhereNoPageIsWanted) {
    const auto never = [](const ScriptPage&) { return false; };
    EXPECT_EQ(interpretUntil(one + two, never).pages.size(), 2U);
    EXPECT_TRUE(interpretUntil("", never).pages.empty());
}

} // namespace
} // namespace orvista
