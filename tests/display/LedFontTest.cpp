#include "display/LedFont.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace orvista {
namespace {

std::string picture(LedFont font, unsigned char character) {
    std::string text;
    for (int row = 0; row < cellHeight(font); ++row) {
        for (int column = 0; column < cellWidth(font); ++column)
            text += (glyph(font, character).rows[static_cast<std::size_t>(row)] & 0x80 >> column) != 0 ? '#'
                                                                                                       : '.';
        text += '\n';
    }
    return text;
}

constexpr LedFont fonts[] = {LedFont::Small5x7, LedFont::Large8x15};

TEST(LedFont, HasCellsOfSixBySevenAndEightByFifteen) {
    EXPECT_EQ(cellWidth(LedFont::Small5x7), 6);
    EXPECT_EQ(cellHeight(LedFont::Small5x7), 7);
    EXPECT_EQ(cellWidth(LedFont::Large8x15), 8);
    EXPECT_EQ(cellHeight(LedFont::Large8x15), 15);
}

TEST(LedFont, DrawsSmallLetters) {
    EXPECT_EQ(picture(LedFont::Small5x7, 'T'), "#####.\n"
                                               "..#...\n"
                                               "..#...\n"
                                               "..#...\n"
                                               "..#...\n"
                                               "..#...\n"
                                               "..#...\n");
    EXPECT_EQ(picture(LedFont::Small5x7, 0xEF), ".#.#..\n"
                                                "......\n"
                                                ".##...\n"
                                                "..#...\n"
                                                "..#...\n"
                                                "..#...\n"
                                                ".###..\n");
}

TEST(LedFont, DrawsLargeLetters) {
    EXPECT_EQ(picture(LedFont::Large8x15, 'L'), "........\n"
                                                "........\n"
                                                "##......\n"
                                                "##......\n"
                                                "##......\n"
                                                "##......\n"
                                                "##......\n"
                                                "##......\n"
                                                "##......\n"
                                                "##......\n"
                                                "##......\n"
                                                "#######.\n"
                                                "........\n"
                                                "........\n"
                                                "........\n");
}

TEST(LedFont, PutsAccentsAboveTheLetter) {
    EXPECT_EQ(picture(LedFont::Large8x15, 0xC9), "...##...\n"
                                                 "..##....\n"
                                                 "........\n"
                                                 "#######.\n"
                                                 "##......\n"
                                                 "##......\n"
                                                 "##......\n"
                                                 "#####...\n"
                                                 "##......\n"
                                                 "##......\n"
                                                 "##......\n"
                                                 "#######.\n"
                                                 "........\n"
                                                 "........\n"
                                                 "........\n");
    EXPECT_EQ(picture(LedFont::Large8x15, 0xE9), "........\n"
                                                 "........\n"
                                                 "...##...\n"
                                                 "..##....\n"
                                                 "........\n"
                                                 ".#####..\n"
                                                 "##...##.\n"
                                                 "##...##.\n"
                                                 "#######.\n"
                                                 "##......\n"
                                                 "##...##.\n"
                                                 ".#####..\n"
                                                 "........\n"
                                                 "........\n"
                                                 "........\n");
}

TEST(LedFont, PutsTheDiaeresisOverTheLastOfItsLetters) {
    EXPECT_EQ(picture(LedFont::Small5x7, 0xFC), ".#.#..\n"
                                                "......\n"
                                                "#...#.\n"
                                                "#...#.\n"
                                                "#...#.\n"
                                                "#..##.\n"
                                                ".##.#.\n");
    EXPECT_EQ(picture(LedFont::Large8x15, 0xFC), "........\n"
                                                 "........\n"
                                                 ".##.##..\n"
                                                 ".##.##..\n"
                                                 "........\n"
                                                 "##...##.\n"
                                                 "##...##.\n"
                                                 "##...##.\n"
                                                 "##...##.\n"
                                                 "##...##.\n"
                                                 "##..###.\n"
                                                 ".###.##.\n"
                                                 "........\n"
                                                 "........\n"
                                                 "........\n");
}

TEST(LedFont, PutsTheCedillaBelow) {
    EXPECT_EQ(picture(LedFont::Small5x7, 0xE7), "......\n"
                                                ".###..\n"
                                                "#.....\n"
                                                "#...#.\n"
                                                ".###..\n"
                                                "..#...\n"
                                                ".##...\n");
}

TEST(LedFont, LeavesBlanksControlsAndUndefinedCodesEmpty) {
    for (const LedFont font : fonts) {
        for (int code = 0; code < 0x20; ++code)
            EXPECT_EQ(glyph(font, static_cast<unsigned char>(code)), Glyph{}) << code;
        for (const unsigned char code : {0x20, 0x7F, 0x81, 0x8D, 0x8F, 0x90, 0x9D, 0xA0})
            EXPECT_EQ(glyph(font, code), Glyph{}) << int(code);
    }
}

TEST(LedFont, DrawsEveryOtherCharacterInItsOwnWay) {
    const std::string empty = "\x7F\x81\x8D\x8F\x90\x9D\xA0";
    for (const LedFont font : fonts) {
        std::map<std::string, int> seen;
        for (int code = 0x21; code < 0x100; ++code) {
            // A soft hyphen looks like a hyphen.
            if (empty.find(static_cast<char>(code)) != std::string::npos || code == 0xAD)
                continue;
            const std::string shown = picture(font, static_cast<unsigned char>(code));
            EXPECT_NE(shown.find('#'), std::string::npos) << code;
            const auto [other, isNew] = seen.emplace(shown, code);
            EXPECT_TRUE(isNew) << code << " looks like " << other->second;
        }
        EXPECT_EQ(glyph(font, 0xAD), glyph(font, '-'));
    }
}

TEST(LedFont, KeepsAGapBetweenLetters) {
    for (const LedFont font : fonts) {
        const unsigned lastColumn = 0x80U >> (cellWidth(font) - 1);
        for (int code = 0x21; code < 0x100; ++code) {
            // The long dash joins its neighbours.
            if (code == 0x97)
                continue;
            for (const unsigned row : glyph(font, static_cast<unsigned char>(code)).rows)
                EXPECT_EQ(row & lastColumn, 0U) << code;
        }
    }
}

TEST(LedFont, StaysInsideItsCell) {
    for (int code = 0; code < 0x100; ++code) {
        const Glyph& small = glyph(LedFont::Small5x7, static_cast<unsigned char>(code));
        for (std::size_t row = 0; row < small.rows.size(); ++row)
            EXPECT_EQ(small.rows[row] & (row < 7 ? 0x03 : 0xFF), 0) << code;
    }
}

} // namespace
} // namespace orvista
