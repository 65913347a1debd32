#include "display/MessagePlayer.h"

#include "display/CrossedFrame.h"
#include "display/PageText.h"
#include "display/RasterAt.h"
#include "display/SettledPage.h"
#include "tests/support/LedText.h"

#include <gtest/gtest.h>

#include <string>

namespace orvista {
namespace {

using testing::ledText;

constexpr PanelSize panel{16};
const DisplayValues values;

/// Page 0 enters for 160 ms, blinks for 40 and leaves for 160; page 1 is drawn in two steps of 100 and 50;
/// page 2 is empty.
const std::string threePages = "CLEAR\r\n"
                               "TEXT 0 0 RED BLACK \"a\"\r\n"
                               "IN GO-LEFT 1 10\r\n"
                               "ACT BLINK 1 20\r\n"
                               "OUT GO-LEFT 1 10\r\n"
                               "\r\n"
                               "CLEAR\r\n"
                               "TEXT 0 0 GREEN BLACK \"b\"\r\n"
                               "ACT STILL 100\r\n"
                               "TEXT 8 0 GREEN BLACK \"c\"\r\n"
                               "ACT STILL 50\r\n"
                               "CLEAR";

Programme programmeOf(const std::string& script, const BitmapProvider& bitmaps = NoBitmaps()) {
    Programme programme(panel, fieldFormats(Project()));
    programme.add({}, script, bitmaps);
    return programme;
}

/// What stands still on a page of these texts, all at y 0 in the large font.
std::string ledsOf(const std::string& drawing) {
    return ledText(rasterAt(programmeOf(drawing + "\r\nACT STILL 1000"), values, 0));
}

std::string shown(const MessagePlayer& player) {
    return ledText(player.raster(values));
}

const std::string a = "TEXT 0 0 RED BLACK \"a\"";
const std::string b = "TEXT 0 0 GREEN BLACK \"b\"";
const std::string bc = "TEXT 0 0 GREEN BLACK \"bc\"";
const std::string dark;

TEST(PagesOfLines, BeginAtTheirFirstLine) {
    const Programme programme = programmeOf(threePages);
    ASSERT_EQ(programme.pageCount(), 3U);
    const std::size_t pages[] = {0, 0, 0, 0, 0, 0, 0, 1, 1, 1, 1, 1, 2, 2};
    for (std::size_t line = 0; line < std::size(pages); ++line)
        EXPECT_EQ(pageOfLine(programme, line), pages[line]) << line;
    EXPECT_EQ(pageOfLine(programmeOf(""), 3), 0U);
    const Programme late = programmeOf("\r\nunknown\r\n" + a + "\r\nACT STILL 10");
    EXPECT_EQ(late.pages().at(0).firstLine, 3U);
    EXPECT_EQ(pageOfLine(late, 1), 0U);
}

TEST(SettledPages, LookAsAfterTheirEnteringEffect) {
    const Programme programme = programmeOf(threePages);
    EXPECT_EQ(ledText(settledPage(programme, 0, values)), ledsOf(a));
    EXPECT_EQ(ledText(settledPage(programme, 1, values)), ledsOf(b));
    EXPECT_EQ(settledPage(programme, 2, values), LedRaster(panel));
    EXPECT_EQ(settledTime(programme, 0), 160);
    EXPECT_EQ(settledTime(programme, 1), 360);
    EXPECT_EQ(settledTime(programme, 2), 510);
    EXPECT_EQ(programme.pageStart(0), 0);
    EXPECT_EQ(programme.pageStart(1), 360);
}

TEST(SettledPages, AreThoseOfPagesWithoutTimeToo) {
    const Programme programme = programmeOf("CLEAR\r\n" + a + "\r\nACT STILL 0\r\nCLEAR\r\n" + b);
    EXPECT_EQ(ledText(settledPage(programme, 0, values)), ledsOf(a));
    EXPECT_EQ(programme.pageStart(1), 0);
    const Programme drawnLate = programmeOf("CLEAR\r\nIN GO-UP 1 10\r\n" + a + "\r\nACT STILL 10");
    EXPECT_EQ(ledText(settledPage(drawnLate, 0, values)), ledsOf(a));
    const Programme onlyEnters = programmeOf("CLEAR\r\n" + a + "\r\nIN GO-UP 1 10");
    EXPECT_EQ(ledText(settledPage(onlyEnters, 0, values)), ledsOf(a));
    EXPECT_EQ(settledTime(onlyEnters, 0), 160);
}

TEST(Player, StandsStillOnAPage) {
    MessagePlayer player(programmeOf(threePages));
    EXPECT_FALSE(player.isPlaying());
    EXPECT_EQ(player.page(), 0U);
    EXPECT_EQ(player.time(), 160);
    EXPECT_EQ(shown(player), ledsOf(a));
    player.advance(1'000'000);
    EXPECT_EQ(player.time(), 160);
    player.stopAt(1);
    EXPECT_EQ(player.page(), 1U);
    EXPECT_EQ(shown(player), ledsOf(b));
    player.stopAt(7);
    EXPECT_EQ(player.page(), 2U);
}

TEST(Player, PlaysFromTheBeginningOfItsPageAtTrueTimes) {
    MessagePlayer player(programmeOf(threePages));
    player.stopAt(1);
    player.play(5000);
    EXPECT_TRUE(player.isPlaying());
    EXPECT_EQ(player.time(), 360);
    player.advance(5099);
    EXPECT_EQ(player.time(), 459);
    EXPECT_EQ(shown(player), ledsOf(b));
    player.advance(5100);
    EXPECT_EQ(shown(player), ledsOf(bc));
    player.advance(5150);
    EXPECT_EQ(player.time(), 0);
    EXPECT_EQ(player.page(), 0U);
    player.advance(5150 + 161);
    EXPECT_EQ(player.raster(values), LedRaster(panel));
    player.advance(5150 + 181);
    EXPECT_EQ(shown(player), ledsOf(a));
}

TEST(Player, StopsWhereItIsAndGoesOnThere) {
    MessagePlayer player(programmeOf(threePages));
    player.play(0);
    player.advance(365);
    player.pause();
    EXPECT_FALSE(player.isPlaying());
    player.advance(9000);
    EXPECT_EQ(player.time(), 365);
    EXPECT_EQ(player.page(), 1U);
    player.play(20'000);
    player.advance(20'010);
    EXPECT_EQ(player.time(), 375);
}

TEST(Player, LeavesOutTimeThatDoesNotCount) {
    MessagePlayer player(programmeOf(threePages));
    player.play(0);
    player.advance(10);
    player.skip(5010);
    player.advance(5020);
    EXPECT_EQ(player.time(), 20);
    player.advance(4000); // a clock that runs backwards moves nothing
    EXPECT_EQ(player.time(), 20);
}

TEST(Player, GoesToAnyTimeOfTheRound) {
    MessagePlayer player(programmeOf(threePages));
    player.seek(465);
    EXPECT_EQ(player.page(), 1U);
    EXPECT_EQ(shown(player), ledsOf(bc));
    player.seek(-1);
    EXPECT_EQ(player.time(), 0);
    player.seek(9999);
    EXPECT_EQ(player.time(), 510);
}

TEST(Player, PlaysOnWithAnotherText) {
    MessagePlayer player(programmeOf(threePages));
    player.play(0);
    player.advance(400);
    player.show(programmeOf("CLEAR\r\n" + b + "\r\nACT STILL 300"));
    EXPECT_TRUE(player.isPlaying());
    EXPECT_EQ(player.time(), 300);
    player.advance(410);
    EXPECT_EQ(player.time(), 10);
    player.stopAt(0);
    player.show(programmeOf(""));
    EXPECT_EQ(player.page(), 0U);
    EXPECT_EQ(player.time(), 0);
    EXPECT_EQ(player.raster(values), LedRaster(panel));
    player.play(0);
    player.advance(100);
    EXPECT_EQ(player.time(), 0);
}

/// Marks every bitmap it does not have.
class Marking final : public BitmapProvider {
public:
    FoundBitmap bitmap(std::string_view name) const override {
        return {std::make_shared<const LedImage>(crossedFrame(name)), std::nullopt};
    }
};

TEST(StandIns, AreDrawnButTakeNoRoom) {
    const std::string script = "CLEAR\r\nIMG 4 0 RED BLACK gone.bmp\r\nOUT GO-LEFT 1 10";
    const Programme marked = programmeOf(script, Marking());
    EXPECT_EQ(marked.duration(), 160);
    const LedRaster raster = settledPage(marked, 0, values);
    EXPECT_EQ(raster.at(3, 0), Led::Off);
    EXPECT_EQ(raster.at(4, 0), Led::Red);
    EXPECT_EQ(settledPage(programmeOf(script), 0, values), LedRaster(panel));
}

TEST(PageTexts, AreWhatIsRead) {
    Project project;
    project.CoilVar[1].onText = "RUN";
    project.CoilVar[1].offText = "STOP";
    const Programme programme =
        programmeOf("TEXT 0 0 RED BLACK \"Pump\"\r\nDISPVAR 0 0 RED BLACK CoilVar2\r\n"
                    "IMG 0 0 RED BLACK a b.bmp");
    EXPECT_EQ(pageText(programme.pages().at(0), fieldFormats(project), values), "Pump STOP a b.bmp");
}

TEST(CrossedFrames, BearTheName) {
    const LedImage frame = crossedFrame("I");
    ASSERT_EQ(frame.width, 32);
    ASSERT_EQ(frame.height, 16);
    const auto at = [&](int x, int y) { return frame.leds[static_cast<std::size_t>(y * frame.width + x)]; };
    for (const auto& [x, y] : {std::pair{0, 0}, {31, 0}, {0, 15}, {31, 15}, {16, 0}, {0, 8}, {2, 1}, {29, 1}})
        EXPECT_EQ(at(x, y), Led::Red) << x << ' ' << y;
    EXPECT_EQ(at(4, 8), Led::Off);
    EXPECT_GT(std::count(frame.leds.begin(), frame.leds.end(), Led::Orange), 7);
    EXPECT_EQ(crossedFrame("alarm.bmp").width, 62);
    EXPECT_EQ(crossedFrame(std::string(1000, 'x')).width, 488);
    EXPECT_EQ(crossedFrame("").width, 32);
}

} // namespace
} // namespace orvista
