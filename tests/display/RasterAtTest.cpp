#include "display/RasterAt.h"

#include "tests/support/BitmapFile.h"
#include "tests/support/LedText.h"
#include "tests/support/StoredBitmaps.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <string>

using namespace std::string_literals;

namespace orvista {
namespace {

using testing::ledText;

/// Panels small enough to write their pictures by hand. "dots.bmp" shows
///     RGO
///     O..
/// and "stencil.bmp" ink at both ends of a row of three.
class Raster : public ::testing::Test {
protected:
    Raster() {
        const std::string pixels = "\0\xFF\xFF\0\0\0\0\0\0\0\0\0"s + "\0\0\xFF\0\xFF\0\0\xFF\xFF\0\0\0"s;
        bitmaps.store("dots.bmp", BitmapFile{3, 2, 24, {}, pixels}.bytes());
        bitmaps.store("stencil.bmp", BitmapFile{3, 1, 1, {0x000000, 0xFFFFFF}, "\x40\0\0\0"s}.bytes());
    }

    std::string at(PanelSize panel, const std::string& script, std::int64_t t = 0) const {
        Programme programme(panel, fieldFormats(project));
        programme.add({}, script, bitmaps);
        return "\n" + ledText(rasterAt(programme, values, t));
    }

    Project project;
    DisplayValues values;
    StoredBitmaps bitmaps;
};

constexpr PanelSize tiny{5, 3};
const std::string dots = "IMG 0 0 RED BLACK dots.bmp\n";

const std::string dark = R"(
.....
.....
.....
)";

const std::string still = R"(
RGO..
O....
.....
)";

TEST_F(Raster, DrawsSmallTextOnItsGround) {
    EXPECT_EQ(at({14, 9}, "TEXTS 1 1 RED GREEN \"LT\""), R"(
..............
.RGGGGGRRRRRG.
.RGGGGGGGRGGG.
.RGGGGGGGRGGG.
.RGGGGGGGRGGG.
.RGGGGGGGRGGG.
.RGGGGGGGRGGG.
.RRRRRGGGRGGG.
..............
)");
}

TEST_F(Raster, DrawsLargeTextOnItsGround) {
    EXPECT_EQ(at({9, 16}, "TEXT 0 0 ORANGE RED \"L\""), R"(
RRRRRRRR.
RRRRRRRR.
OORRRRRR.
OORRRRRR.
OORRRRRR.
OORRRRRR.
OORRRRRR.
OORRRRRR.
OORRRRRR.
OORRRRRR.
OORRRRRR.
OOOOOOOR.
RRRRRRRR.
RRRRRRRR.
RRRRRRRR.
.........
)");
}

TEST_F(Raster, CutsTextAtEveryEdge) {
    EXPECT_EQ(at({4, 3}, "TEXTS -4 -5 RED GREEN \"LLL\""), R"(
GGRG
RGRR
....
)");
    EXPECT_EQ(at({4, 3}, "TEXTS 3 2 RED GREEN \"LLL\""), R"(
....
....
...R
)");
}

TEST_F(Raster, DrawsLaterElementsOverEarlierOnes) {
    EXPECT_EQ(at({7, 7}, "TEXTS 0 0 RED BLACK \"L\"\nTEXTS 1 0 GREEN BLACK \"T\""), R"(
RGGGGG.
R..G...
R..G...
R..G...
R..G...
R..G...
R..G...
)");
}

TEST_F(Raster, DrawsPicturesInTheirOwnColours) {
    EXPECT_EQ(at(tiny, "IMG 1 1 GREEN RED dots.bmp"), R"(
.....
.RGO.
.O...
)");
    EXPECT_EQ(at(tiny, "IMG -1 -1 GREEN RED DOTS.BMP"), R"(
.....
.....
.....
)");
    EXPECT_EQ(at(tiny, "IMG 3 2 GREEN RED Dots.Bmp"), R"(
.....
.....
...RG
)");
}

TEST_F(Raster, DrawsStencilsInTheColoursOfTheCommand) {
    EXPECT_EQ(at({5, 1}, "IMG 1 0 GREEN RED stencil.bmp"), "\n.GRG.\n");
    EXPECT_EQ(at({5, 1}, "IMG 1 0 BLACK ORANGE stencil.bmp"), "\n..O..\n");
}

TEST_F(Raster, LeavesOutPicturesThatAreNotThere) {
    EXPECT_EQ(at(tiny, "IMG 0 0 RED GREEN none.bmp"), dark);
}

TEST_F(Raster, EntersLeftwardsFromTheRight) {
    const std::string script = dots + "IN GO-LEFT 1 10\nACT STILL 100";
    EXPECT_EQ(at(tiny, script, 0), dark);
    EXPECT_EQ(at(tiny, script, 9), dark);
    EXPECT_EQ(at(tiny, script, 10), R"(
....R
....O
.....
)");
    EXPECT_EQ(at(tiny, script, 25), R"(
...RG
...O.
.....
)");
    EXPECT_EQ(at(tiny, script, 49), R"(
.RGO.
.O...
.....
)");
    EXPECT_EQ(at(tiny, script, 50), still);
    EXPECT_EQ(at(tiny, script, 149), still);
    EXPECT_EQ(at(tiny, script, 150), dark);
}

TEST_F(Raster, EntersRightwardsFromTheLeft) {
    const std::string script = dots + "IN GO-RIGHT 1 10\nACT STILL 100";
    EXPECT_EQ(at(tiny, script, 0), dark);
    EXPECT_EQ(at(tiny, script, 20), dark);
    EXPECT_EQ(at(tiny, script, 30), R"(
O....
.....
.....
)");
    EXPECT_EQ(at(tiny, script, 40), R"(
GO...
.....
.....
)");
    EXPECT_EQ(at(tiny, script, 50), still);
}

TEST_F(Raster, EntersUpwardsFromBelow) {
    const std::string script = dots + "IN GO-UP 1 10\nACT STILL 100";
    EXPECT_EQ(at(tiny, script, 0), dark);
    EXPECT_EQ(at(tiny, script, 10), R"(
.....
.....
RGO..
)");
    EXPECT_EQ(at(tiny, script, 20), R"(
.....
RGO..
O....
)");
    EXPECT_EQ(at(tiny, script, 30), still);
}

TEST_F(Raster, EntersDownwardsFromAbove) {
    const std::string script = dots + "IN GO-DOWN 1 10\nACT STILL 100";
    EXPECT_EQ(at(tiny, script, 10), dark);
    EXPECT_EQ(at(tiny, script, 20), R"(
O....
.....
.....
)");
    EXPECT_EQ(at(tiny, script, 30), still);
}

TEST_F(Raster, LeavesInAllDirections) {
    const std::string before = dots + "ACT STILL 100\n";
    EXPECT_EQ(at(tiny, before + "OUT GO-LEFT 1 10", 100), still);
    EXPECT_EQ(at(tiny, before + "OUT GO-LEFT 1 10", 110), R"(
GO...
.....
.....
)");
    EXPECT_EQ(at(tiny, before + "OUT GO-RIGHT 1 10", 130), R"(
...RG
...O.
.....
)");
    EXPECT_EQ(at(tiny, before + "OUT GO-UP 1 10", 110), R"(
O....
.....
.....
)");
    EXPECT_EQ(at(tiny, before + "OUT GO-DOWN 1 10", 120), R"(
.....
.....
RGO..
)");
}

TEST_F(Raster, MovesByItsStepAndStopsAtItsPlace) {
    const std::string script = dots + "IN GO-LEFT 3 10\nACT STILL 100";
    EXPECT_EQ(at(tiny, script, 0), dark);
    EXPECT_EQ(at(tiny, script, 10), R"(
..RGO
..O..
.....
)");
    EXPECT_EQ(at(tiny, script, 20), still);
}

TEST_F(Raster, LetsTextLongerThanThePanelPass) {
    const std::string script = "TEXTS 0 0 RED BLACK \"LTL\"\nIN GO-LEFT 1 1\nOUT GO-LEFT 1 1";
    EXPECT_EQ(at({6, 2}, script, 6), R"(
R.....
R.....
)");
    EXPECT_EQ(at({6, 2}, script, 6 + 8), R"(
RRR.R.
R...R.
)");
    EXPECT_EQ(at({6, 2}, script, 6 + 12), R"(
R.....
R.....
)");
    EXPECT_EQ(at({6, 2}, script, 6 + 18), R"(
......
......
)");
    EXPECT_EQ(at({6, 2}, script, 6 + 18 + 6), R"(
R.....
R.....
)");
}

TEST_F(Raster, FadesThroughSixteenEvenlySpreadLevels) {
    const std::string script = "TEXTS 0 0 RED RED \"  \"\nIN FADE 10\nACT STILL 10\nOUT FADE 20";
    const auto lit = [&](std::int64_t t) {
        const std::string text = at({8, 4}, script, t);
        return std::count(text.begin(), text.end(), 'R');
    };
    for (std::int64_t level = 0; level < 16; ++level) {
        EXPECT_EQ(lit(level * 10), level * 2) << level;
        EXPECT_EQ(lit(level * 10 + 9), level * 2) << level;
        EXPECT_EQ(lit(170 + level * 20), 32 - level * 2) << level;
    }
    EXPECT_EQ(lit(160), 32);
    EXPECT_EQ(at({8, 4}, script, 40), R"(
R.R.R.R.
........
R.R.R.R.
........
)");
    EXPECT_EQ(at({8, 4}, script, 80), R"(
R.R.R.R.
.R.R.R.R
R.R.R.R.
.R.R.R.R
)");
}

TEST_F(Raster, BlinksDarkFirst) {
    const std::string script = dots + "ACT BLINK 2 75\nACT STILL 500";
    EXPECT_EQ(at(tiny, script, 0), dark);
    EXPECT_EQ(at(tiny, script, 74), dark);
    EXPECT_EQ(at(tiny, script, 75), still);
    EXPECT_EQ(at(tiny, script, 149), still);
    EXPECT_EQ(at(tiny, script, 150), dark);
    EXPECT_EQ(at(tiny, script, 225), still);
    EXPECT_EQ(at(tiny, script, 300), still);
    EXPECT_EQ(at(tiny, script, 799), still);
    EXPECT_EQ(at(tiny, script, 800), dark);
}

TEST_F(Raster, ShowsPagesOneAfterTheOther) {
    const std::string script =
        "CLEAR\n" + dots + "ACT STILL 10\nCLEAR\nIMG 0 2 GREEN BLACK stencil.bmp\nACT STILL 10";
    EXPECT_EQ(at(tiny, script, 9), still);
    EXPECT_EQ(at(tiny, script, 10), R"(
.....
.....
G.G..
)");
    EXPECT_EQ(at(tiny, script, 20), still);
}

TEST_F(Raster, ShowsWhatHasBeenDrawnByThen) {
    const std::string script = dots + "ACT STILL 10\nIMG 0 2 GREEN BLACK stencil.bmp\nACT STILL 10";
    EXPECT_EQ(at(tiny, script, 9), still);
    EXPECT_EQ(at(tiny, script, 10), R"(
RGO..
O....
G.G..
)");
}

TEST_F(Raster, ShowsLiveValuesAsTheyAreNow) {
    project.RegVar[1].width = "2";
    project.RegVar[1].precision = "0";
    const std::string script = "DISPVARS 0 0 RED BLACK RegVar2";
    EXPECT_EQ(at({12, 7}, script), at({12, 7}, "TEXTS 0 0 RED BLACK \" 0\""));
    values.floats[1] = -7;
    EXPECT_EQ(at({12, 7}, script), R"(
......RRRRR.
..........R.
.........R..
RRRRR...R...
........R...
.......R....
.......R....
)");
    values.floats[1] = 100;
    EXPECT_EQ(at({12, 7}, script), at({12, 7}, "TEXTS 0 0 RED BLACK \"**\""));
    values.floats[1] = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(at({12, 7}, script), at({12, 7}, "TEXTS 0 0 RED BLACK \"--\""));
}

TEST_F(Raster, ShowsBooleansInTheirTexts) {
    project.CoilVar[6].onText = "L";
    project.CoilVar[6].offText = "";
    const std::string script = "DISPVARS 0 0 RED GREEN CoilVar7";
    EXPECT_EQ(at({7, 1}, script), "\nGGGGGG.\n");
    values.booleans.set(6);
    EXPECT_EQ(at({7, 1}, script), "\nRGGGGG.\n");
}

TEST_F(Raster, ShowsTimeAndDateOfTheClockItIsGiven) {
    values.clock = {2026, 11, 20, 13, 48, 7};
    const auto same = [&](const char* field, const char* text) {
        EXPECT_EQ(at({96}, field), at({96}, text)) << field;
        EXPECT_NE(at({96}, field), at({96}, "CLEAR")) << field;
    };
    same("TIME 0 0 RED BLACK ", "TEXT 0 0 RED BLACK \"13:48:07\"");
    same("TIMES 6 5 RED BLACK ", "TEXTS 6 5 RED BLACK \"13:48:07\"");
    same("DATE 8 0 GREEN BLACK ", "TEXT 8 0 GREEN BLACK \"20.11.2026\"");
    same("DATES 0 5 ORANGE BLACK ", "TEXTS 0 5 ORANGE BLACK \"20.11.2026\"");
}

TEST_F(Raster, IsTheSameForTheSameArguments) {
    const std::string script =
        "TEXT 0 0 RED BLACK \"abc\"\nTIME 40 0 RED BLACK \nIN GO-LEFT 1 25\nOUT FADE 50";
    for (std::int64_t t = 0; t < 5000; t += 333)
        EXPECT_EQ(at({128}, script, t), at({128}, script, t)) << t;
}

} // namespace
} // namespace orvista
