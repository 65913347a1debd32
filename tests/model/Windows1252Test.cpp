#include "model/Windows1252.h"

#include <gtest/gtest.h>

#include <string>

namespace orvista {
namespace {

TEST(Windows1252, EveryByteComesBackThroughUtf8) {
    std::string all;
    for (int byte = 0; byte < 256; ++byte)
        all.push_back(static_cast<char>(byte));
    EXPECT_EQ(windows1252FromUtf8(utf8FromWindows1252(all)), all);
}

TEST(Windows1252, MapsTheKnownCharacters) {
    EXPECT_EQ(utf8FromWindows1252("\x80 \x99 \xE9 \xFF"), "\u20AC \u2122 \u00E9 \u00FF");
    EXPECT_EQ(windows1252FromUtf8("\u0178\u017E"), "\x9F\x9E");
}

TEST(Windows1252, MapsTheFiveUndefinedBytesToControls) {
    for (const unsigned char byte : {0x81, 0x8D, 0x8F, 0x90, 0x9D})
        EXPECT_EQ(windows1252CodePoint(byte), char32_t{byte});
    EXPECT_EQ(windows1252Byte(0x80), std::nullopt) << "a control whose byte is another character";
}

TEST(Windows1252, RefusesWhatItDoesNotHave) {
    EXPECT_EQ(windows1252FromUtf8("\u03A9"), std::nullopt);
    EXPECT_EQ(windows1252FromUtf8("\U0001F600"), std::nullopt);
    EXPECT_EQ(windows1252FromUtf8("a\xCC\x81"), std::nullopt) << "a combining accent";
    for (const char* malformed : {"\xC3", "\xC3(", "\xE2\x82", "\x80", "\xC1\x81", "\xE0\x81\xA1", "\xFF"})
        EXPECT_EQ(windows1252FromUtf8(malformed), std::nullopt);
}

TEST(Windows1252, FoldsTheCaseOfAllItsLetters) {
    const std::string capitals = "AZ\xC0\xD6\xD8\xDE\x8A\x8C\x8E\x9F";
    const std::string others = "az\xE0\xF6\xF8\xFE\x9A\x9C\x9E\xFF"
                               "@[`{\xD7\xF7\xDF\x80\x8D";
    std::string lowered;
    for (const char letter : capitals + others)
        lowered.push_back(static_cast<char>(lowerWindows1252(static_cast<unsigned char>(letter))));
    EXPECT_EQ(lowered, others.substr(0, capitals.size()) + others);
}

} // namespace
} // namespace orvista
