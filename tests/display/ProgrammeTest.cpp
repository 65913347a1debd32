#include "display/RasterAt.h"

#include "tests/support/BitmapFile.h"
#include "tests/support/NamedItem.h"
#include "tests/support/PageDuration.h"
#include "tests/support/StoredBitmaps.h"

#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>
#include <string>

using namespace std::string_literals;

namespace orvista {
namespace {

const NoBitmaps noBitmaps;

Programme programme(const std::string& script, PanelSize panel = {32}) {
    Programme result(panel, fieldFormats(Project()));
    result.add({}, script, noBitmaps);
    return result;
}

std::int64_t duration(const std::string& script) {
    return programme(script).duration();
}

/// The text that stands still at a time; "-" when the panel is dark.
std::string textAt(const Programme& programme, std::int64_t t) {
    const Programme::Moment moment = programme.momentAt(t);
    if (moment.page == nullptr || moment.page->elements.empty())
        return "-";
    return std::get<TextElement>(moment.page->elements[0]).text;
}

TEST(Durations, AreThoseOfTheSteps) {
    EXPECT_EQ(duration("ACT STILL 3000"), 3000);
    EXPECT_EQ(duration("ACT BLINK 4 75"), 600);
    EXPECT_EQ(duration("IN FADE 50"), 800);
    EXPECT_EQ(duration("OUT FADE 100"), 1600);
    EXPECT_EQ(duration("IN GO-LEFT 1 50"), 1600);
    EXPECT_EQ(duration("IN GO-UP 1 50"), 800);
    EXPECT_EQ(duration("IN GO-LEFT 5 50"), 350);
    EXPECT_EQ(duration("OUT GO-DOWN 1 25"), 400);
    EXPECT_EQ(duration("IN GO-LEFT 1000000 50"), 50);
    EXPECT_EQ(duration("IN GO-LEFT 1 0"), 0);
}

TEST(Durations, LetTheWholeOfALongTextPass) {
    const std::string text = "TEXT 8 0 RED BLACK \"" + std::string(10, 'x') + "\"\n";
    EXPECT_EQ(duration(text + "IN GO-LEFT 1 1"), 32);
    EXPECT_EQ(duration(text + "OUT GO-LEFT 1 1"), 88);
    EXPECT_EQ(duration(text + "IN GO-RIGHT 1 1"), 88);
    EXPECT_EQ(duration(text + "OUT GO-RIGHT 1 1"), 32);
    EXPECT_EQ(duration("TEXT 0 10 RED BLACK \"x\"\nOUT GO-UP 1 1"), 25);
    EXPECT_EQ(duration("TEXT 0 10 RED BLACK \"x\"\nIN GO-UP 1 1"), 16);
    EXPECT_EQ(duration("DISPVAR 0 0 RED BLACK RegVar1\nOUT GO-LEFT 1 1"), 56);
    EXPECT_EQ(duration("DISPVARS 0 0 RED BLACK CoilVar1\nDISPVAR 20 0 RED BLACK CoilVar1\nOUT GO-LEFT 1 1"),
              44);
    EXPECT_EQ(duration("TIME 0 0 RED BLACK \nOUT GO-LEFT 1 1"), 64);
    EXPECT_EQ(duration("DATES 0 0 RED BLACK \nOUT GO-LEFT 1 1"), 60);
}

TEST(Moments, FollowPagesAndBeginAgain) {
    const Programme shown = programme("CLEAR\nTEXT 0 0 RED BLACK \"a\"\nACT STILL 100\n"
                                      "CLEAR\nTEXT 0 0 RED BLACK \"b\"\nACT STILL 50\n"
                                      "CLEAR\nACT STILL 10");
    EXPECT_EQ(shown.duration(), 160);
    ASSERT_EQ(shown.pageCount(), 3U);
    EXPECT_EQ(pageDuration(shown, 0), 100);
    EXPECT_EQ(pageDuration(shown, 1), 50);
    EXPECT_EQ(pageDuration(shown, 2), 10);
    EXPECT_EQ(textAt(shown, -5), "a");
    EXPECT_EQ(textAt(shown, 0), "a");
    EXPECT_EQ(textAt(shown, 99), "a");
    EXPECT_EQ(textAt(shown, 100), "b");
    EXPECT_EQ(textAt(shown, 149), "b");
    EXPECT_EQ(textAt(shown, 150), "-");
    EXPECT_EQ(textAt(shown, 160), "a");
    EXPECT_EQ(textAt(shown, 160'000'000'000'000 + 120), "b");
    EXPECT_EQ(shown.momentAt(120).elapsed, 20);
}

TEST(Moments, SkipWhatTakesNoTime) {
    const Programme shown = programme("CLEAR\nTEXT 0 0 RED BLACK \"a\"\nACT STILL 0\n"
                                      "CLEAR\nTEXT 0 0 RED BLACK \"b\"\nACT STILL 50\n");
    EXPECT_EQ(textAt(shown, 0), "b");
    EXPECT_EQ(textAt(shown, 49), "b");
}

TEST(Moments, StandStillWhenNothingTakesTime) {
    const Programme shown = programme("CLEAR\nTEXT 0 0 RED BLACK \"a\"\nACT STILL 0");
    EXPECT_EQ(shown.duration(), 0);
    EXPECT_EQ(textAt(shown, 12345), "a");
    EXPECT_EQ(textAt(programme("CLEAR"), 12345), "-");
    EXPECT_EQ(programme("").momentAt(0).page, nullptr);
}

TEST(ProgrammeMoments, TimesBeforeTheStartCountAsTheStart) {
    const Programme shown = programme("TEXT 0 0 RED BLACK \"L\"\nIN GO-LEFT 1 10\nACT STILL 1000");
    for (const std::int64_t t : {std::int64_t{-1}, std::int64_t{-15}, std::int64_t{-1'000'000},
                                 std::numeric_limits<std::int64_t>::min()}) {
        EXPECT_EQ(shown.momentAt(t).elapsed, 0) << t;
        EXPECT_EQ(shown.momentAt(t).step, shown.momentAt(0).step) << t;
        EXPECT_EQ(rasterAt(shown, {}, t), rasterAt(shown, {}, 0)) << t;
    }
}

TEST(ProgrammePanel, RefusesZeroColumns) {
    EXPECT_THROW(Programme({0}, {}), std::invalid_argument);
    EXPECT_THROW(Programme({-128}, {}), std::invalid_argument);
    EXPECT_THROW(deviceProgramme(Project(), {}, PlayList::inOrder(), noBitmaps, {0}), std::invalid_argument);
}

TEST(ProgrammeRemarks, NameTheMessage) {
    Programme shown({32}, {});
    StoredBitmaps bitmaps;
    bitmaps.store("broken.bmp", "BM");
    shown.add(named("ALTMSG2"), "CLEAR\nFOO", bitmaps);
    shown.add(named("STDMSG1"),
              "IMG 0 0 RED BLACK gone.bmp\nIMG 0 0 RED BLACK Broken.BMP\nIMG 0 0 RED BLACK GONE.bmp",
              bitmaps);
    EXPECT_EQ(shown.remarks(),
              (std::vector<ProgrammeRemark>{{named("ALTMSG2"), 2, "FOO"},
                                            {named("STDMSG1"), 0, "bitmap gone.bmp was not found"},
                                            {named("STDMSG1"), 0, "bitmap Broken.BMP is cut short"}}));
}

TEST(ProgrammeRemarks, AreTenThousandAtMost) {
    std::string script;
    for (int i = 0; i < 999; ++i)
        script += "FOO\n";
    Programme shown({32}, {});
    for (int i = 0; i < 10; ++i)
        shown.add(named("STDMSG1"), script, noBitmaps);
    shown.add(named("STDMSG2"), "1\n2\n3\n4\n5\n6\n7\n8\n9", noBitmaps);
    EXPECT_EQ(shown.remarks().size(), 9'999U);
    shown.add(named("STDMSG3"), "A\nB", noBitmaps);
    ASSERT_EQ(shown.remarks().size(), 10'000U);
    EXPECT_EQ(shown.remarks().back(), (ProgrammeRemark{named("STDMSG3"), 1, "A"}));
}

class Device : public testing::Test {
protected:
    Device() {
        for (std::size_t i = 0; i < regularMessageCount; ++i)
            project.STDMSG[i] = page("S" + std::to_string(i + 1));
        for (std::size_t i = 0; i < emergencyMessageCount; ++i)
            project.ALTMSG[i] = page("E" + std::to_string(i + 1));
    }

    static std::string page(const std::string& text) {
        return "CLEAR\r\nTEXT 0 0 RED BLACK \"" + text + "\"\r\nACT STILL 10";
    }

    /// The texts of one round, ten milliseconds each.
    std::string round(const PlayList& list = PlayList::inOrder()) const {
        const Programme shown = deviceProgramme(project, coils, list, noBitmaps, {32});
        std::string texts;
        for (std::int64_t t = 0; t < shown.duration(); t += 10)
            texts += textAt(shown, t) + ' ';
        return texts;
    }

    Project project;
    MessageCoils coils;
};

TEST_F(Device, IsDarkWhenNoMessageIsOn) {
    EXPECT_EQ(round(), "");
    EXPECT_EQ(deviceProgramme(project, coils, PlayList::inOrder(), noBitmaps, {32}).pageCount(), 0U);
}

TEST_F(Device, ShowsRegularMessagesThatAreOnInOrder) {
    for (const std::size_t i : {39, 2, 0})
        coils.regular.set(i);
    EXPECT_EQ(round(), "S1 S3 S40 ");
}

TEST_F(Device, FollowsThePlayList) {
    coils.regular.set(0).set(2).set(39);
    EXPECT_EQ(
        round(readPlayList("DISPMSG STDMSG3\r\nDISPMSG STDMSG2\r\ndispmsg  stdmsg1 \r\nDISPMSG STDMSG3")),
        "S3 S1 S3 ");
    EXPECT_EQ(round(PlayList{{400, 2}, {}}), "S3 ");
}

TEST_F(Device, ShowsEmergencyMessagesInsteadOfAllOthers) {
    coils.regular.set();
    coils.emergency.set(19).set(4);
    EXPECT_EQ(round(), "E5 E20 ");
    EXPECT_EQ(round(PlayList{}), "E5 E20 ");
    coils.emergency.reset();
    EXPECT_EQ(round().substr(0, 9), "S1 S2 S3 ");
}

TEST_F(Device, AnEmergencyMessageThatClearsDarkensThePanel) {
    coils.regular.set();
    coils.emergency.set(0);
    project.ALTMSG[0] = clearScript;
    EXPECT_EQ(round(), "");
    const Programme shown = deviceProgramme(project, coils, PlayList::inOrder(), noBitmaps, {32});
    EXPECT_EQ(rasterAt(shown, {}, 5), LedRaster({32}));
}

TEST(PlayListFile, RemarksLinesThatNameNoMessage) {
    const PlayList list =
        readPlayList("DISPMSG STDMSG40\n\nDISPMSG STDMSG41\nDISPMSG STDMSG0\nDISPMSG ALTMSG1\n"
                     "DISPMSG STDMSG\nSHOW STDMSG1\nDISPMSG\nDISPMSG STDMSG1x\nDISPMSG STDMSG+1");
    EXPECT_EQ(list.messages, std::vector<std::size_t>{39});
    ASSERT_EQ(list.remarks.size(), 8U);
    EXPECT_EQ(list.remarks[0], (PlayListRemark{3, "DISPMSG STDMSG41"}));
    EXPECT_EQ(list.remarks[7], (PlayListRemark{10, "DISPMSG STDMSG+1"}));
}

TEST(PlayListFile, IsInOrderAsTheEditorWritesIt) {
    std::string text;
    for (int i = 1; i <= 40; ++i)
        text += "DISPMSG STDMSG" + std::to_string(i) + "\r\n";
    EXPECT_EQ(readPlayList(text).messages, PlayList::inOrder().messages);
    EXPECT_EQ(PlayList::inOrder().messages.size(), 40U);
    EXPECT_EQ(PlayList::inOrder().messages[7], 7U);
}

TEST(Bitmaps, AreFoundWhateverTheCaseOfTheirNames) {
    StoredBitmaps bitmaps;
    bitmaps.store("Pump \xC9.BMP", "first");
    bitmaps.store("PUMP \xC9.bmp", "BM");
    EXPECT_EQ(bitmaps.bitmap("pump \xC9.bmp").error, BitmapError::CutShort);
    // Only ASCII letters are folded.
    EXPECT_EQ(bitmaps.bitmap("pump \xE9.bmp").error, std::nullopt);
}

TEST(FieldFormats, ComeFromTheProject) {
    Project project;
    project.RegVar[63].width = "9";
    project.RegVar[63].precision = "1";
    project.CoilVar[31].onText = "running";
    project.CoilVar[31].offText = std::string(2000, 'x');
    const FieldFormats formats = fieldFormats(project);
    EXPECT_EQ(formats.floats[0], (FloatFormat{7, 3}));
    EXPECT_EQ(formats.floats[63], (FloatFormat{9, 1}));
    EXPECT_EQ(formats.booleans[0], (BooleanTexts{"ON", "OFF"}));
    EXPECT_EQ(formats.booleans[31], (BooleanTexts{"running", std::string(700, 'x')}));
}

} // namespace
} // namespace orvista
