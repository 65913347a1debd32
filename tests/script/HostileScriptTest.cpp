#include "display/RasterAt.h"
#include "tests/support/NamedItem.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace orvista {
namespace {

/// Knows every name, and counts how often it is asked.
class CountingBitmaps final : public BitmapProvider {
public:
    FoundBitmap bitmap(std::string_view) const override {
        ++calls;
        return {nullptr, BitmapError::CutShort};
    }
    mutable int calls = 0;
};

const NoBitmaps noBitmaps;

Programme programme(const std::string& script, PanelSize panel = {128}) {
    Programme result(panel, fieldFormats(Project()));
    result.add({}, script, noBitmaps);
    return result;
}

std::string repeated(const std::string& text, std::size_t count) {
    std::string result;
    result.reserve(text.size() * count);
    for (std::size_t i = 0; i < count; ++i)
        result += text;
    return result;
}

/// Draws many moments, the last of the round among them.
void drawAll(const Programme& programme) {
    for (int i = 0; i < 200; ++i)
        rasterAt(programme, {}, programme.duration() / 200 * i);
    rasterAt(programme, {}, programme.duration() - 1);
}

TEST(Hostile, AMegabyteOfTextIsDrawnWhereItIsSeen) {
    const std::string text(1 << 20, 'L');
    const Programme shown = programme("TEXT 0 0 RED BLACK \"" + text + "\"\nOUT GO-LEFT 1 1");
    EXPECT_EQ(shown.duration(), 8 << 20);
    EXPECT_EQ(rasterAt(shown, {}, std::int64_t{8} * 500'000),
              rasterAt(programme("TEXT 0 0 RED BLACK \"" + text + "\""), {}, 0));
    EXPECT_EQ(rasterAt(shown, {}, shown.duration() - 1).at(0, 5), Led::Off);
    EXPECT_EQ(rasterAt(shown, {}, shown.duration() - 8).at(0, 5), Led::Red);
    drawAll(shown);
}

TEST(Hostile, AMegabyteWithoutSenseIsOneShortRemark) {
    for (const char filler : {'A', ' ', '"', '9', '\0', '\xFF'}) {
        const std::string line = "TEXT " + std::string(1 << 20, filler) + "x";
        const InterpretedScript script = interpretScript(line);
        EXPECT_TRUE(script.pages.empty());
        ASSERT_EQ(script.remarks.size(), 1U);
        EXPECT_EQ(script.remarks[0].text, line.substr(0, 200));
    }
}

TEST(Hostile, AHundredThousandPagesAreAllShown) {
    const Programme shown =
        programme(repeated("CLEAR\r\nTEXT 0 0 RED BLACK \"L\"\r\nACT STILL 10\r\n", 100'000));
    EXPECT_EQ(shown.pageCount(), 100'000U);
    EXPECT_EQ(shown.duration(), 1'000'000);
    EXPECT_EQ(shown.momentAt(999'999).elapsed, 9);
    drawAll(shown);
}

TEST(Hostile, PagesHaveABoundedNumberOfElements) {
    const InterpretedScript script = interpretScript(repeated("TIME 0 0 RED BLACK \n", 5000));
    ASSERT_EQ(script.pages.size(), 1U);
    EXPECT_EQ(script.pages[0].elements.size(), maximumElementsOfAPage);
    EXPECT_EQ(script.remarks.size(), maximumRemarks);
    EXPECT_EQ(script.remarks[0].line, maximumElementsOfAPage + 1);
}

TEST(Hostile, TheLongestTimesDoNotOverflow) {
    const std::string huge(30, '9');
    const Programme shown = programme(
        "TEXT " + huge + " 0 RED BLACK \"" + std::string(100'000, 'x') + "\"\n" +
        repeated("IN GO-RIGHT 1 " + huge + "\nACT STILL " + huge + "\nACT BLINK " + huge + " " + huge + "\n",
                 10'000));
    EXPECT_EQ(shown.duration(), 10'000LL * (1'800'000LL * 60'000 + 3'600'000 + 2LL * 1000 * 60'000));
    drawAll(shown);
    rasterAt(shown, {}, std::numeric_limits<std::int64_t>::max());
    rasterAt(shown, {}, std::numeric_limits<std::int64_t>::min());
}

TEST(Hostile, ElementsFarOutsideAreDrawnNowhere) {
    const LedRaster dark({128});
    for (const char* x : {"999999999", "-999999999", "128", "-64"})
        for (const char* command : {"TEXT", "TEXTS"})
            EXPECT_EQ(rasterAt(programme(std::string(command) + " " + x + " 0 RED RED \"12345678\""), {}, 0),
                      dark)
                << command << x;
    for (const char* y : {"999999999", "-999999999", "16", "-15"})
        EXPECT_EQ(rasterAt(programme(std::string("TEXT 0 ") + y + " RED RED \"1\""), {}, 0), dark) << y;
}

TEST(Hostile, EachBitmapIsReadOnce) {
    Programme shown({128}, {});
    const CountingBitmaps bitmaps;
    shown.add({}, repeated("CLEAR\nIMG 0 0 RED BLACK same.bmp\nIMG 0 0 RED BLACK SAME.BMP\n", 10'000),
              bitmaps);
    EXPECT_EQ(bitmaps.calls, 1);
    EXPECT_EQ(shown.remarks().size(), 1U);
}

TEST(Hostile, ScriptsBeyondTheLimitAreLeftOut) {
    Programme shown({128}, {});
    const std::string half = "ACT STILL 1\n" + std::string(Programme::maximumScriptBytes / 2 - 12, ' ');
    shown.add(named("STDMSG1"), half, noBitmaps);
    shown.add(named("STDMSG2"), half, noBitmaps);
    shown.add(named("STDMSG3"), "ACT STILL 1", noBitmaps);
    EXPECT_EQ(shown.duration(), 2);
    EXPECT_EQ(shown.remarks(),
              (std::vector<ProgrammeRemark>{{named("STDMSG3"), 0, "is left out: the scripts are too long"}}));
}

TEST(Hostile, EveryByteIsAnOrdinaryCharacterOfAText) {
    std::string text;
    for (int code = 0; code < 256; ++code)
        if (code != '\r' && code != '\n')
            text += static_cast<char>(code);
    const InterpretedScript script = interpretScript("TEXT 0 0 RED BLACK \"" + text + "\"");
    ASSERT_EQ(script.pages.size(), 1U);
    EXPECT_EQ(std::get<TextElement>(script.pages[0].elements[0]).text, text);
    drawAll(programme("TEXT 0 0 RED BLACK \"" + text + "\"\nOUT GO-LEFT 7 1"));
}

} // namespace
} // namespace orvista
