#include "script/Places.h"

#include <gmock/gmock.h>

namespace orvista {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// "tank:8>" for a place, "{" for an escape, "logo.bmp" for a bitmap's name; behind it line and column.
std::vector<std::string> placesOf(const std::vector<TextPlace>& places) {
    std::vector<std::string> texts;
    for (const TextPlace& place : places) {
        std::string text = place.name;
        if (place.width > 0)
            text += ":" + std::to_string(place.width);
        text += place.alignment == PlaceAlignment::Right    ? ">"
                : place.alignment == PlaceAlignment::Centre ? "^"
                                                            : "";
        if (place.kind == TextPlace::Kind::Bitmap)
            text += ".bmp";
        if (place.kind == TextPlace::Kind::Brace)
            text += "{";
        if (place.line > 0)
            text += " " + std::to_string(place.line) + ":" + std::to_string(place.column);
        texts.push_back(text);
    }
    return texts;
}

std::vector<std::string> inQuotes(const std::string& text) {
    std::vector<std::string> places = placesOf(placesInScript("TEXT 0 0 RED BLACK \"" + text + "\""));
    for (std::string& place : places)
        place.erase(place.find(' '));
    return places;
}

TEST(Places, HaveNameWidthAndAlignment) {
    EXPECT_THAT(inQuotes("{line:8}"), ElementsAre("line:8"));
    EXPECT_THAT(inQuotes("{Tank_1:1>} of {tank2:32^}"), ElementsAre("tank_1:1>", "tank2:32^"));
    EXPECT_THAT(inQuotes("{a:9}{b:10}"), ElementsAre("a:9", "b:10"));
}

TEST(Places, SayWhereOnTheDisplayTheRestIs) {
    const std::string text = "{{a {line:3>}|{none}{b:32}c";
    const auto columnOf = [&](const char* rest) { return shownColumn(text, text.find(rest)); };
    EXPECT_EQ(columnOf("{{a"), 0U);
    EXPECT_EQ(columnOf("a {"), 1U);
    EXPECT_EQ(columnOf("{line"), 3U);
    EXPECT_EQ(columnOf("|"), 6U);
    EXPECT_EQ(columnOf("{b:"), 13U);
    EXPECT_EQ(columnOf("c"), 45U);
    EXPECT_EQ(shownColumn(text, text.size()), 46U);
}

TEST(Places, AreWholeOrText) {
    for (const char* text : {"{",         "{}",        "{line}",      "{line:}",
                             "{line:0}",  "{line:08}", "{line:33}",   "{line:999999999999999}",
                             "{line:8",   "{line:8>",  "{line:8<}",   "{line:8>>}",
                             "{line:-8}", "{ line:8}", "{line :8}",   "{line: 8}",
                             "{1line:8}", "{_line:8}", "{l\xEFne:8}", "{line:8 }",
                             "line:8}",   "{:8}",      "{line.8}",    "(line:8)"})
        EXPECT_THAT(inQuotes(text), IsEmpty()) << text;
}

TEST(Places, MayFollowAnOpenOne) {
    EXPECT_THAT(inQuotes("{a{b:3}"), ElementsAre("b:3"));
    EXPECT_THAT(inQuotes("{a:3{b:3}}"), ElementsAre("b:3"));
    EXPECT_THAT(inQuotes("{{b:3}"), ElementsAre("{"));
    EXPECT_THAT(inQuotes("{{{b:3}}"), ElementsAre("{", "b:3"));
    EXPECT_THAT(inQuotes("{{{{"), ElementsAre("{", "{"));
    EXPECT_THAT(inQuotes("{a:3}\"{b:3}"), ElementsAre("a:3", "b:3")); // quotes within a text are text
}

TEST(Places, StandInTextsAndBitmapNamesAlone) {
    const std::vector<TextPlace> places = placesInScript("CLEAR\r\n"
                                                         "  texts 0 0 RED BLACK \"Tank {tank:8}\"\n"
                                                         "IMG 0 0 RED BLACK {Logo}.BMP\r"
                                                         "IMG 0 0 RED BLACK x{logo}.bmp\n"
                                                         "IMG 0 0 RED BLACK {logo}.bmp.bmp\n"
                                                         "IMG 0 0 RED BLACK {logo:8}.bmp\n"
                                                         "IMG 0 0 RED BLACK {logo}\n"
                                                         "TEXT {x:3} 0 RED BLACK \"\"\n"
                                                         "TEXT 0 0 {c:3} BLACK \"{a:3}\"\n"
                                                         "TEXT 0 0 RED BLACK {a:3}\n"
                                                         "TEXT 0 0 RED BLACK \"{a:\n3}\"\n"
                                                         "{a:3}\n"
                                                         "TEXT 0 0 RED BLACK \"a\" {a:3}\n"
                                                         "TEXT 0 0 RED BLACK \"\" {a:3} \"\"");
    EXPECT_THAT(placesOf(places), ElementsAre("tank:8 2:29", "logo.bmp 3:19", "a:3 15:23"));
    EXPECT_EQ(places[0].at, 35U);
    EXPECT_EQ(places[0].length, 8U);
}

TEST(Places, CountAMarkAtTheStart) {
    const std::vector<TextPlace> places = placesInScript("\xEF\xBB\xBFTEXT 0 0 RED BLACK \"{a:3}\"");
    EXPECT_THAT(placesOf(places), ElementsAre("a:3 1:24"));
    EXPECT_EQ(places[0].at, 23U);
}

TEST(Places, OfSwitchTextsNeedNoWidth) {
    EXPECT_THAT(placesOf(placesInSwitchText("{on} {on:4>} {{on} {on.bmp}")), ElementsAre("on", "on:4>", "{"));
}

TEST(Places, AreFilledWithBlanks) {
    EXPECT_EQ(placed("ab", 5, PlaceAlignment::Left), "ab   ");
    EXPECT_EQ(placed("ab", 5, PlaceAlignment::Right), "   ab");
    EXPECT_EQ(placed("ab", 5, PlaceAlignment::Centre), " ab  ");
    EXPECT_EQ(placed("ab", 2, PlaceAlignment::Centre), "ab");
    EXPECT_EQ(placed("abc", 2, PlaceAlignment::Right), "ab");
    EXPECT_EQ(placed("abc", 0, PlaceAlignment::Right), "abc");
}

} // namespace
} // namespace orvista
