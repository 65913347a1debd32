#include "script/MessagePage.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <utility>
#include <vector>

namespace orvista {
namespace {

constexpr std::size_t red = 0;
constexpr std::size_t green = 1;
constexpr std::size_t orange = 2;
constexpr std::size_t black = 3;
constexpr std::size_t smallFont = 0;
constexpr std::size_t largeFont = 1;
constexpr std::size_t blink = 1;
constexpr std::size_t regVar1 = 32;
constexpr std::size_t date = 96;
constexpr std::size_t time = 97;

const std::array<std::string, 4> colourWords{"RED", "GREEN", "ORANGE", "BLACK"};

std::string page(const MessageForm& form) {
    return BuildPartialScript(form, PathRules::posix());
}

/// Without effects, so that a page is "CLEAR", content, fields and "ACT STILL 1000".
MessageForm plainText(const std::string& text, std::size_t font = largeFont) {
    MessageForm form;
    form.txtText = text;
    form.cbFont = font;
    form.cbInEffect = 0;
    form.cbOutEffect = 0;
    return form;
}

MessageForm plainBitmap(const std::string& path) {
    MessageForm form = plainText("");
    form.bitmap = true;
    form.txtPath = path;
    return form;
}

TEST(MessagePage, WorkedExample) {
    MessageForm form;
    form.txtText = "Temp: %4v C";
    form.fields[0] = {regVar1, green, black};
    form.cbDelay = 2;
    form.cbOutEffect = 3;
    form.cbOFSpeed = 0;
    EXPECT_EQ(page(form), "CLEAR\r\n"
                          "TEXT 0 0 RED BLACK \"Temp:      C\"\r\n"
                          "DISPVAR 48 0 GREEN BLACK RegVar1\r\n"
                          "IN GO-LEFT 1 50\r\n"
                          "ACT STILL 3000\r\n"
                          "OUT GO-UP 1 100");
}

TEST(MessagePage, FieldsOfAMasterStandWhereThePlacesBeforeThemEnd) {
    MessageForm form = plainText("{tank:4}: %4v {line:12>}%v");
    form.fields[0] = {regVar1, green, black};
    form.fields[1] = {regVar1, green, black};
    const std::string head = "CLEAR\r\nTEXT 0 0 RED BLACK \"{tank:4}:      {line:12>} \"\r\nDISPVAR ";
    const std::string between = " 0 GREEN BLACK RegVar1\r\nDISPVAR ";
    const std::string tail = " 0 GREEN BLACK RegVar1\r\nACT STILL 1000";
    EXPECT_EQ(page(form), head + "80" + between + "200" + tail);
    form.isOfMaster = true;
    EXPECT_EQ(page(form), head + "48" + between + "184" + tail);
}

TEST(MessagePage, UntouchedFormWithAText) {
    MessageForm form;
    form.txtText = "Hello";
    EXPECT_EQ(page(form), "CLEAR\r\nTEXT 0 0 RED BLACK \"Hello\"\r\nIN GO-LEFT 1 50\r\nACT STILL 1000\r\n"
                          "OUT GO-LEFT 1 50");
}

TEST(MessagePage, WithoutFieldsAndEffectsThreeLines) {
    EXPECT_EQ(page(plainText("A")), "CLEAR\r\nTEXT 0 0 RED BLACK \"A\"\r\nACT STILL 1000");
    EXPECT_EQ(page(plainText("A", smallFont)), "CLEAR\r\nTEXTS 0 5 RED BLACK \"A\"\r\nACT STILL 1000");
}

TEST(MessagePage, EmptyContentIsClearAndALineEnd) {
    MessageForm text;
    EXPECT_EQ(page(text), "CLEAR\r\n");
    text.txtPath = "/plant/logo.bmp";
    EXPECT_EQ(page(text), "CLEAR\r\n");
    MessageForm bitmap;
    bitmap.bitmap = true;
    EXPECT_EQ(page(bitmap), "CLEAR\r\n");
    bitmap.txtText = "A%v";
    EXPECT_EQ(page(bitmap), "CLEAR\r\n");
}

TEST(MessagePage, TextStandsAsTyped) {
    EXPECT_EQ(page(plainText(" say \"on\" \\ 100% ")),
              "CLEAR\r\nTEXT 0 0 RED BLACK \" say \"on\" \\ 100% \"\r\nACT STILL 1000");
    EXPECT_EQ(page(plainText("\"")), "CLEAR\r\nTEXT 0 0 RED BLACK \"\"\"\r\nACT STILL 1000");
    EXPECT_EQ(page(plainText("\xC4\xA0\x80")),
              "CLEAR\r\nTEXT 0 0 RED BLACK \"\xC4\xA0\x80\"\r\nACT STILL 1000");
    const std::string longText(100'000, 'x');
    EXPECT_EQ(page(plainText(longText)),
              "CLEAR\r\nTEXT 0 0 RED BLACK \"" + longText + "\"\r\nACT STILL 1000");
}

TEST(MessagePage, FieldCommandsOfTheLargeFont) {
    MessageForm form = plainText("%v%2v%3v%v");
    form.fields[0] = {0, red, black};
    form.fields[1] = {regVar1 + 11, green, orange};
    form.fields[2] = {time, orange, green};
    form.fields[3] = {date, black, red};
    EXPECT_EQ(page(form), "CLEAR\r\n"
                          "TEXT 0 0 RED BLACK \"       \"\r\n"
                          "DISPVAR 0 0 RED BLACK CoilVar1\r\n"
                          "DISPVAR 8 0 GREEN ORANGE RegVar12\r\n"
                          "TIME 24 0 ORANGE GREEN \r\n"
                          "DATE 48 0 BLACK RED \r\n"
                          "ACT STILL 1000");
}

TEST(MessagePage, FieldCommandsOfTheSmallFont) {
    MessageForm form = plainText("%v%2v%3v%v", smallFont);
    form.fields[0] = {6, red, black};
    form.fields[1] = {regVar1 + 63, green, orange};
    form.fields[2] = {time, orange, green};
    form.fields[3] = {date, black, red};
    EXPECT_EQ(page(form), "CLEAR\r\n"
                          "TEXTS 0 5 RED BLACK \"       \"\r\n"
                          "DISPVARS 0 5 RED BLACK CoilVar7\r\n"
                          "DISPVARS 6 5 GREEN ORANGE RegVar64\r\n"
                          "TIMES 18 5 ORANGE GREEN \r\n"
                          "DATES 36 5 BLACK RED \r\n"
                          "ACT STILL 1000");
}

TEST(MessagePage, EverySourceIsWrittenAsItIsListed) {
    const auto fieldLine = [](std::size_t position) {
        MessageForm form = plainText("%v");
        form.fields[0].cbVar = position;
        const std::string script = page(form);
        const std::string before = "CLEAR\r\nTEXT 0 0 RED BLACK \" \"\r\n";
        const std::string behind = "\r\nACT STILL 1000";
        return script.substr(before.size(), script.size() - before.size() - behind.size());
    };
    for (std::size_t number = 1; number <= 32; ++number)
        EXPECT_EQ(fieldLine(number - 1), "DISPVAR 0 0 RED BLACK CoilVar" + std::to_string(number));
    for (std::size_t number = 1; number <= 64; ++number)
        EXPECT_EQ(fieldLine(number + 31), "DISPVAR 0 0 RED BLACK RegVar" + std::to_string(number));
    EXPECT_EQ(fieldLine(96), "DATE 0 0 RED BLACK ");
    EXPECT_EQ(fieldLine(97), "TIME 0 0 RED BLACK ");
}

TEST(MessagePage, FieldColumnInPixels) {
    EXPECT_EQ(
        page(plainText("0123456789%v", smallFont)),
        "CLEAR\r\nTEXTS 0 5 RED BLACK \"0123456789 \"\r\nDISPVARS 60 5 RED BLACK CoilVar1\r\nACT STILL 1000");
    EXPECT_EQ(
        page(plainText("0123456789%v")),
        "CLEAR\r\nTEXT 0 0 RED BLACK \"0123456789 \"\r\nDISPVAR 80 0 RED BLACK CoilVar1\r\nACT STILL 1000");
    const std::string wide(32767, 'w');
    EXPECT_EQ(page(plainText(wide + "%v")),
              "CLEAR\r\nTEXT 0 0 RED BLACK \"" + wide +
                  " \"\r\nDISPVAR 262136 0 RED BLACK CoilVar1\r\nACT STILL 1000");
}

TEST(MessagePage, AccentedCharactersAreOneColumnEach) {
    EXPECT_EQ(page(plainText("\xC4\xD6\xDC\xE9%v")),
              "CLEAR\r\nTEXT 0 0 RED BLACK \"\xC4\xD6\xDC\xE9 \"\r\nDISPVAR 32 0 RED BLACK CoilVar1\r\nACT "
              "STILL 1000");
}

TEST(MessagePage, ZeroToFivePlaceholders) {
    const std::string behind = "\r\nACT STILL 1000";
    const std::vector<std::pair<std::string, std::string>> pages{
        {"a", "\"a\""},
        {"a%v", "\"a \"\r\nDISPVAR 8 0 RED BLACK CoilVar1"},
        {"a%vb%v", "\"a b \"\r\nDISPVAR 8 0 RED BLACK CoilVar1\r\nDISPVAR 24 0 RED BLACK CoilVar1"},
        {"%v%v%v", "\"   \"\r\nDISPVAR 0 0 RED BLACK CoilVar1\r\nDISPVAR 8 0 RED BLACK CoilVar1\r\n"
                   "DISPVAR 16 0 RED BLACK CoilVar1"},
        {"%v%v%v%v", "\"    \"\r\nDISPVAR 0 0 RED BLACK CoilVar1\r\nDISPVAR 8 0 RED BLACK CoilVar1\r\n"
                     "DISPVAR 16 0 RED BLACK CoilVar1\r\nDISPVAR 24 0 RED BLACK CoilVar1"},
        {"%v%v%v%v<%5v>", "\"    <>\"\r\nDISPVAR 0 0 RED BLACK CoilVar1\r\nDISPVAR 8 0 RED BLACK CoilVar1\r\n"
                          "DISPVAR 16 0 RED BLACK CoilVar1\r\nDISPVAR 24 0 RED BLACK CoilVar1"}};
    for (const auto& [text, lines] : pages)
        EXPECT_EQ(page(plainText(text)), "CLEAR\r\nTEXT 0 0 RED BLACK " + lines + behind) << text;
}

TEST(MessagePage, EveryColourPairOfTheContent) {
    for (std::size_t fg = 0; fg < 4; ++fg) {
        for (std::size_t bg = 0; bg < 4; ++bg) {
            const std::string pair = colourWords[fg] + " " + colourWords[bg];
            MessageForm text = plainText("A");
            text.cbFgClr = fg;
            text.cbBgClr = bg;
            EXPECT_EQ(page(text), "CLEAR\r\nTEXT 0 0 " + pair + " \"A\"\r\nACT STILL 1000");
            MessageForm bitmap = plainBitmap("a.bmp");
            bitmap.cbFgClr = fg;
            bitmap.cbBgClr = bg;
            EXPECT_EQ(page(bitmap), "CLEAR\r\nIMG 0 0 " + pair + " a.bmp\r\nACT STILL 1000");
        }
    }
}

TEST(MessagePage, EveryColourPairOfEachField) {
    for (std::size_t slot = 0; slot < 4; ++slot) {
        for (std::size_t pair = 0; pair < 16; ++pair) {
            MessageForm form = plainText("%v%v%v%v");
            form.fields[slot].cbVarFgClr = pair / 4;
            form.fields[slot].cbVarBgClr = pair % 4;
            std::string expected = "CLEAR\r\nTEXT 0 0 RED BLACK \"    \"";
            for (std::size_t line = 0; line < 4; ++line) {
                const std::string colours =
                    line == slot ? colourWords[pair / 4] + " " + colourWords[pair % 4] : "RED BLACK";
                expected += "\r\nDISPVAR " + std::to_string(8 * line) + " 0 " + colours + " CoilVar1";
            }
            EXPECT_EQ(page(form), expected + "\r\nACT STILL 1000");
        }
    }
}

TEST(MessagePage, EveryEffectAndSpeed) {
    const std::array<std::string, 6> words{"",         "GO-LEFT 1 ", "GO-RIGHT 1 ",
                                           "GO-UP 1 ", "GO-DOWN 1 ", "FADE "};
    const std::array<std::string, 3> speeds{"100", "50", "25"};
    for (std::size_t effect = 0; effect < 6; ++effect) {
        for (std::size_t speed = 0; speed < 3; ++speed) {
            MessageForm in = plainText("A");
            in.cbInEffect = effect;
            in.cbIFSpeed = speed;
            MessageForm out = plainText("A");
            out.cbOutEffect = effect;
            out.cbOFSpeed = speed;
            const std::string line = words[effect] + speeds[speed];
            EXPECT_EQ(page(in), "CLEAR\r\nTEXT 0 0 RED BLACK \"A\"\r\n" +
                                    (effect ? "IN " + line + "\r\n" : std::string()) + "ACT STILL 1000");
            EXPECT_EQ(page(out), "CLEAR\r\nTEXT 0 0 RED BLACK \"A\"\r\nACT STILL 1000" +
                                     (effect ? "\r\nOUT " + line : std::string()));
        }
    }
}

TEST(MessagePage, StillIsHeldForTheDelay) {
    const std::array<std::string, 10> milliseconds{"1000", "2000", "3000", "4000", "5000",
                                                   "6000", "7000", "8000", "9000", "10000"};
    for (std::size_t position = 0; position < milliseconds.size(); ++position) {
        MessageForm form = plainText("A");
        form.cbDelay = position;
        EXPECT_EQ(page(form), "CLEAR\r\nTEXT 0 0 RED BLACK \"A\"\r\nACT STILL " + milliseconds[position]);
    }
}

TEST(MessagePage, BlinkIgnoresTheDelay) {
    for (std::size_t position = 0; position < 10; ++position) {
        MessageForm form = plainText("A");
        form.cbSpEffect = blink;
        form.cbDelay = position;
        EXPECT_EQ(page(form), "CLEAR\r\nTEXT 0 0 RED BLACK \"A\"\r\nACT BLINK 4 75\r\nACT STILL 500");
    }
}

TEST(MessagePage, OrderOfAFullPage) {
    MessageForm form;
    form.txtText = "%v";
    form.cbFont = smallFont;
    form.cbInEffect = 5;
    form.cbIFSpeed = 2;
    form.cbSpEffect = blink;
    form.cbOutEffect = 4;
    form.cbOFSpeed = 0;
    EXPECT_EQ(page(form),
              "CLEAR\r\nTEXTS 0 5 RED BLACK \" \"\r\nDISPVARS 0 5 RED BLACK CoilVar1\r\nIN FADE 25\r\n"
              "ACT BLINK 4 75\r\nACT STILL 500\r\nOUT GO-DOWN 1 100");
}

TEST(MessagePage, BitmapPage) {
    MessageForm form;
    form.bitmap = true;
    form.txtPath = "/plant/site 1/pump logo.bmp";
    form.cbFgClr = green;
    form.cbBgClr = orange;
    const std::string expected =
        "CLEAR\r\nIMG 0 0 GREEN ORANGE pump logo.bmp\r\nIN GO-LEFT 1 50\r\nACT STILL 1000\r\n"
        "OUT GO-LEFT 1 50";
    EXPECT_EQ(page(form), expected);
    form.txtText = "typed before %v %v";
    form.cbFont = smallFont;
    EXPECT_EQ(page(form), expected);
}

TEST(MessagePage, BitmapNameIsWhatStandsBehindTheLastSeparator) {
    EXPECT_EQ(bitmapName(PathRules::posix(), "/a/b.bmp"), "b.bmp");
    EXPECT_EQ(bitmapName(PathRules::posix(), "b.bmp"), "b.bmp");
    EXPECT_EQ(bitmapName(PathRules::posix(), "/a\\b.bmp"), "a\\b.bmp");
    EXPECT_EQ(bitmapName(PathRules::windows(), "C:\\a\\b.bmp"), "b.bmp");
    EXPECT_EQ(bitmapName(PathRules::windows(), "C:\\a/b.bmp"), "b.bmp");
    EXPECT_EQ(bitmapName(PathRules::windows(), "b.bmp"), "b.bmp");
    EXPECT_EQ(bitmapName(PathRules::posix(), "/a/"), "");
}

TEST(MessagePage, BitmapNameIsInTheDeviceEncoding) {
    EXPECT_EQ(bitmapName(PathRules::posix(), "/\xE2\x82\xAC/F\xC3\xBCll\xE2\x82\xAC.bmp"), "F\xFCll\x80.bmp");
    // The folder may hold any character, the name may not.
    EXPECT_EQ(bitmapName(PathRules::posix(), "/\xD0\x96/a.bmp"), "a.bmp");
    EXPECT_EQ(bitmapName(PathRules::posix(), "/a/\xD0\x96.bmp"), std::nullopt);
    EXPECT_EQ(bitmapName(PathRules::posix(), "/a/x\ny.bmp"), std::nullopt);
    EXPECT_EQ(bitmapName(PathRules::posix(), "/a/x\ry.bmp"), std::nullopt);
    EXPECT_EQ(page(plainBitmap("/a/\xD0\x96.bmp")), "CLEAR\r\n");
}

TEST(MessagePage, PositionsBeyondAListAreRefused) {
    MessageForm form = plainText("A");
    form.cbDelay = 10;
    EXPECT_THROW(page(form), std::out_of_range);
}

} // namespace
} // namespace orvista
