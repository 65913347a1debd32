#include "display/PageFit.h"

#include "display/RasterAt.h"
#include "script/Styles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>
#include <string>

/// What a page shows of its characters, held against what is drawn.
namespace orvista {
namespace {

constexpr PanelSize panel{24};
const NoBitmaps noBitmaps;

std::size_t litDots(const LedRaster& raster) {
    return raster.leds().size() - static_cast<std::size_t>(std::ranges::count(raster.leds(), Led::Off));
}

std::string textLine(const char* command, int x, int y, const std::string& text) {
    return std::string(command) + " " + std::to_string(x) + " " + std::to_string(y) + " RED BLACK \"" + text +
           "\"\n";
}

/// Whether all dots of the one character that is not blank are lit at some moment.
bool isDrawnWhole(const char* command, int x, int y, const std::string& text, const std::string& steps) {
    Programme whole({100}, fieldFormats(Project()));
    whole.add({}, textLine(command, 0, 0, text), noBitmaps);
    const std::size_t all = litDots(rasterAt(whole, {}, 0));
    Programme shown(panel, fieldFormats(Project()));
    shown.add({}, textLine(command, x, y, text) + steps, noBitmaps);
    for (std::int64_t t = 0; t < shown.duration(); ++t)
        if (litDots(rasterAt(shown, {}, t)) == all)
            return true;
    return false;
}

DrawnPage pageOf(const std::string& script) {
    return {interpretScript(script).pages.at(0)};
}

TEST(PageFit, CountsWhatIsNeverDrawnWhole) {
    const FieldFormats formats = fieldFormats(Project());
    std::mt19937 random(8);
    const auto any = [&](int lowest, int highest) {
        return lowest + static_cast<int>(random() % static_cast<unsigned>(highest - lowest + 1));
    };
    const std::string letters = "MgL1.\xC9-'_ ";
    const char* const effects[] = {"GO-LEFT", "GO-RIGHT", "GO-UP", "GO-DOWN"};
    std::size_t unseenInAll = 0;
    for (int round = 0; round < 120; ++round) {
        const char* const command = any(0, 1) == 0 ? "TEXT" : "TEXTS";
        const int x = any(-20, 30);
        const int y = any(-9, 12);
        std::string text;
        for (int i = any(1, 5); i > 0; --i)
            text += letters[random() % letters.size()];
        const auto effect = [&](const char* direction) {
            return std::string(direction) + effects[any(0, 3)] + " " + std::to_string(any(1, 3)) + " 1\n";
        };
        const std::string steps =
            (any(0, 1) == 0 ? effect("IN ") : "") + "ACT STILL 1\n" + (any(0, 1) == 0 ? effect("OUT ") : "");

        std::size_t unseen = 0;
        for (std::size_t i = 0; i < text.size(); ++i) {
            std::string alone(text.size(), ' ');
            alone[i] = text[i];
            if (text[i] != ' ' && !isDrawnWhole(command, x, y, alone, steps))
                ++unseen;
        }
        const std::string script = textLine(command, x, y, text) + steps;
        const DrawnPage page = pageOf(script);
        EXPECT_EQ(PageFit(page, panel, formats).unseen(0, Passing::Counts).count, unseen) << script;
        unseenInAll += unseen;
    }
    EXPECT_GT(unseenInAll, 50U);
}

TEST(PageFit, KnowsTheWayOutThatShowsAllOfIt) {
    const FieldFormats formats = fieldFormats(Project());
    const PanelSize narrow{32};
    int found = 0;
    int none = 0;
    for (const int x : {-70, -40, -9, 0, 10, 30, 90})
        for (const int y : {-30, -16, -6, 0, 5, 12, 40}) {
            const std::string script = textLine("TEXT", x, y, "MM") + "ACT STILL 1\n";
            const DrawnPage page = pageOf(script);
            const PageFit::Unseen unseen = PageFit(page, narrow, formats).unseen(0, Passing::Counts);
            std::vector<Effect> helpful;
            for (const Effect effect : {Effect::Left, Effect::Right, Effect::Up, Effect::Down}) {
                const DrawnPage left = pageOf(script + "OUT " + std::string(styleOf(effect).shown) + " 1 1");
                if (unseen.count > 0 && PageFit(left, narrow, formats).unseen(0, Passing::Counts).count == 0)
                    helpful.push_back(effect);
            }
            EXPECT_EQ(helpful.size(), unseen.wayOut ? 1U : 0U) << script;
            if (unseen.wayOut) {
                EXPECT_EQ(helpful, std::vector{*unseen.wayOut}) << script;
                ++found;
            } else if (unseen.count > 0) {
                ++none;
            }
        }
    EXPECT_GT(found, 10);
    EXPECT_GT(none, 10);
}

std::size_t unfit(const std::string& script, const Project& project = {}) {
    return unfitCharacters(pageOf(script), {128}, fieldFormats(project), Passing::Ignored);
}

TEST(PageFit, WhatDoesNotFitIsCountedWhileThePageStandsStill) {
    EXPECT_EQ(unfit("TEXT 0 0 RED BLACK \"Emergency stop pump\""), 3U);
    EXPECT_EQ(unfit("TEXT 0 0 RED BLACK \"Emergency stop pump\"\nOUT GO-LEFT 1 50"), 3U);
    EXPECT_EQ(unfit("TEXT 0 0 RED BLACK \"Emergency stop p   \""), 0U);
    EXPECT_EQ(unfit("TEXT 112 0 RED BLACK \"abc\"\nDISPVARS 100 0 RED BLACK RegVar1"), 4U);
    EXPECT_EQ(unfit("TEXT 0 99 RED BLACK \"a b\""), 2U);
    EXPECT_EQ(unfit("CLEAR"), 0U);
}

TEST(PageFit, WhatDrawsNothingIsSeenWhereverItLies) {
    for (const std::string script : {"IMG 500 0 RED BLACK none.bmp", "TEXT 500 0 RED BLACK \"  \""}) {
        const DrawnPage page = pageOf(script);
        EXPECT_EQ(PageFit(page, panel, fieldFormats(Project())).unseen(0, Passing::Counts).count, 0U)
            << script;
    }
}

TEST(PageFit, ABitmapCountsAsOne) {
    const auto picture = std::make_shared<const LedImage>(LedImage{true, 16, 16, {}});
    const auto unseen = [&](const std::string& script) {
        const DrawnPage page =
            drawnPage(interpretScript(script).pages.at(0), [&](const std::string&) { return picture; });
        return PageFit(page, panel, fieldFormats(Project())).unseen(0, Passing::Counts).count;
    };
    for (const char* seen : {"0 0", "8 0"})
        EXPECT_EQ(unseen("IMG " + std::string(seen) + " RED BLACK pump.bmp"), 0U) << seen;
    for (const char* cut : {"-1 0", "9 0", "0 1", "0 -1", "500 0"})
        EXPECT_EQ(unseen("IMG " + std::string(cut) + " RED BLACK pump.bmp"), 1U) << cut;
}

TEST(PageFit, FieldsCountAsTheirTexts) {
    Project project;
    project.CoilVar[0].onText = "M g";
    project.CoilVar[0].offText = "";
    for (int x = -30; x < 140; ++x)
        for (const char* y : {" -4", " 0", " 3", " 8"}) {
            const std::string place = std::to_string(x) + y + " RED BLACK ";
            EXPECT_EQ(unfit("DISPVAR " + place + "CoilVar1", project), unfit("TEXT " + place + "\"M g\""))
                << place;
        }
}

TEST(PageFit, FieldsHaveTheWidthOfWhatTheyShow) {
    Project project;
    project.RegVar[1].width = "5";
    project.CoilVar[0].onText = "RUNNING";
    const FieldFormats formats = fieldFormats(project);
    const auto width = [&](const std::string& line) {
        return shownWidth(std::get<FieldElement>(pageOf(line).elements.at(0)), formats);
    };
    EXPECT_EQ(width("DISPVAR 0 0 RED BLACK RegVar1"), 7);
    EXPECT_EQ(width("DISPVAR 0 0 RED BLACK RegVar2"), 5);
    EXPECT_EQ(width("DISPVAR 0 0 RED BLACK CoilVar1"), 7);
    EXPECT_EQ(width("DISPVAR 0 0 RED BLACK CoilVar2"), 3);
    EXPECT_EQ(width("TIME 0 0 RED BLACK"), static_cast<std::int64_t>(timeFieldText({}).size()));
    EXPECT_EQ(width("DATE 0 0 RED BLACK"), static_cast<std::int64_t>(dateFieldText({}).size()));
}

} // namespace
} // namespace orvista
