#include "display/LedImage.h"

#include "tests/support/BitmapFile.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace std::string_literals;

namespace orvista {
namespace {

constexpr auto O = Led::Off;
constexpr auto R = Led::Red;
constexpr auto G = Led::Green;
constexpr auto Y = Led::Orange;

LedImage image(const std::string& bytes) {
    const auto result = readBitmap(bytes);
    if (const auto* error = std::get_if<BitmapError>(&result)) {
        ADD_FAILURE() << description(*error);
        return {};
    }
    return std::get<LedImage>(result);
}

BitmapError error(const std::string& bytes) {
    const auto result = readBitmap(bytes);
    EXPECT_TRUE(std::holds_alternative<BitmapError>(result));
    return std::holds_alternative<BitmapError>(result) ? std::get<BitmapError>(result) : BitmapError{};
}

TEST(Bitmap, ReadsAFileByteForByte) {
    // 2 x 2 at 24 bits: red, green above black, orange. Rows are stored from the bottom.
    const std::string bytes = "BM\x46\0\0\0\0\0\0\0\x36\0\0\0"
                              "\x28\0\0\0\x02\0\0\0\x02\0\0\0\x01\0\x18\0\0\0\0\0\x10\0\0\0"
                              "\x13\x0B\0\0\x13\x0B\0\0\0\0\0\0\0\0\0\0"
                              "\0\0\0\0\xA5\xFF\0\0"
                              "\0\0\xFF\0\xFF\0\0\0"s;
    EXPECT_EQ(bytes.size(), 70U);
    EXPECT_EQ(image(bytes), (LedImage{false, 2, 2, {R, G, O, Y}}));
}

TEST(Bitmap, ReadsRowsFromTheTopToo) {
    const std::string rows = "\0\0\xFF\0"s + "\0\xFF\0\0"s;
    EXPECT_EQ(image(BitmapFile{1, 2, 24, {}, rows}.bytes()).leds, (std::vector{G, R}));
    EXPECT_EQ(image(BitmapFile{1, -2, 24, {}, rows}.bytes()).leds, (std::vector{R, G}));
}

TEST(Bitmap, LightsTheDiodesFromHalfBrightnessOn) {
    // Blue, green, red, unused.
    const std::string pixels = "\xFF\x7F\x7F\0"
                               "\0\x7F\x80\0"
                               "\0\x80\x7F\0"
                               "\xFF\x80\x80\xFF"s;
    EXPECT_EQ(image(BitmapFile{4, 1, 32, {}, pixels}.bytes()), (LedImage{false, 4, 1, {O, R, G, Y}}));
}

TEST(Bitmap, TakesGreyPicturesAsStencils) {
    const std::string bits = "\x40\0\0\0"s;
    EXPECT_EQ(image(BitmapFile{3, 1, 1, {0x000000, 0xFFFFFF}, bits}.bytes()),
              (LedImage{true, 3, 1, {Y, O, Y}}));
    EXPECT_EQ(image(BitmapFile{3, 1, 1, {0xFFFFFF, 0x000000}, bits}.bytes()),
              (LedImage{true, 3, 1, {O, Y, O}}));
    const std::string greys = "\x7F\x7F\x7F\x80\x80\x80\0\0"s;
    EXPECT_EQ(image(BitmapFile{2, 1, 24, {}, greys}.bytes()), (LedImage{true, 2, 1, {Y, O}}));
    EXPECT_EQ(image(BitmapFile{3, 1, 1, {0xFF0000, 0x000000}, bits}.bytes()),
              (LedImage{false, 3, 1, {R, O, R}}));
}

TEST(Bitmap, ReadsPalettesOfSixteenAnd256Colours) {
    const std::vector<std::uint32_t> palette = {0x000000, 0xFF0000, 0x00FF00, 0xFFFF00};
    BitmapFile four{5, 1, 4, palette, "\x01\x23\x10\0"s};
    four.coloursUsed = 4;
    EXPECT_EQ(image(four.bytes()).leds, (std::vector{O, R, G, Y, R}));
    BitmapFile eight{3, 1, 8, palette, "\x03\x02\x01\0"s};
    eight.coloursUsed = 4;
    EXPECT_EQ(image(eight.bytes()).leds, (std::vector{Y, G, R}));
}

TEST(Bitmap, RowsThatFillWholeWordsHaveNoPadding) {
    const std::vector<std::uint32_t> palette = {0x000000, 0xFF0000};
    const auto leds = [](const BitmapFile& file) { return image(file.bytes()).leds; };
    // The lower row is stored first: its last dot is lit, then the upper row's first.
    const std::string bits = "\0\0\0\x01\x80\0\0\0"s;
    std::vector<Led> expected(64, O);
    expected[0] = expected[63] = R;
    EXPECT_EQ(leds({32, 2, 1, palette, bits}), expected);
    BitmapFile four{8, 2, 4, palette, "\0\0\0\x01\x10\0\0\0"s};
    four.coloursUsed = 2;
    EXPECT_EQ(leds(four), (std::vector{R, O, O, O, O, O, O, O, O, O, O, O, O, O, O, R}));
    BitmapFile eight{4, 2, 8, palette, "\0\0\0\x01\x01\0\0\0"s};
    eight.coloursUsed = 2;
    EXPECT_EQ(leds(eight), (std::vector{R, O, O, O, O, O, O, R}));
    const std::string colours = "\0\0\0\0\0\0\0\0\0\0\0\xFF\0\0\xFF\0\0\0\0\0\0\0\0\0"s;
    EXPECT_EQ(leds({4, 2, 24, {}, colours}), (std::vector{R, O, O, O, O, O, O, R}));
    EXPECT_EQ(leds({1, 2, 32, {}, "\0\0\xFF\0\0\xFF\0\0"s}), (std::vector{G, R}));
}

TEST(Bitmap, TakesNumbersBeyondThePaletteAsBlack) {
    BitmapFile file{2, 1, 8, {0xFF0000}, "\0\xFF\0\0"s};
    file.coloursUsed = 1;
    EXPECT_EQ(image(file.bytes()).leds, (std::vector{R, O}));
}

TEST(Bitmap, ReadsLongerHeadersWithTheUsualMasks) {
    BitmapFile file{1, 1, 32, {}, "\0\xFF\0\0"s};
    file.headerSize = 124;
    EXPECT_EQ(image(file.bytes()).leds, std::vector{G});
    file.compression = 3;
    EXPECT_EQ(error(file.bytes()), BitmapError::Compressed);
    const auto masked = [](const BitmapFile& bitmap, const std::string& masks) {
        return bitmap.bytes().replace(54, 12, masks);
    };
    const std::string usual = "\0\0\xFF\0\0\xFF\0\0\xFF\0\0\0"s;
    EXPECT_EQ(image(masked(file, usual)).leds, std::vector{G});
    for (const std::size_t other : {0U, 4U, 8U}) {
        std::string masks = usual;
        masks[other] = '\x01';
        EXPECT_EQ(error(masked(file, masks)), BitmapError::Compressed) << other;
    }
    file.depth = 24;
    EXPECT_EQ(error(masked(file, usual)), BitmapError::Compressed);
    // After the shortest header the masks may also be cut off.
    file.depth = 32;
    file.headerSize = 40;
    file.pixels = usual;
    EXPECT_EQ(image(file.bytes()).leds, std::vector{R});
    file.pixels.pop_back();
    EXPECT_EQ(error(file.bytes()), BitmapError::Compressed);
}

TEST(Bitmap, NeedsNoPaddingBehindTheLastRow) {
    EXPECT_EQ(image(BitmapFile{1, 1, 24, {}, "\0\0\xFF"s}.bytes()).leds, std::vector{R});
    EXPECT_EQ(error(BitmapFile{1, 1, 24, {}, "\0\0"s}.bytes()), BitmapError::CutShort);
}

TEST(Bitmap, IsCutShortAtEveryByte) {
    const std::string whole = BitmapFile{9, 2, 1, {0x000000, 0xFFFFFF}, "\xAA\x80\0\0\x55\0\0\0"s}.bytes();
    EXPECT_EQ(image(whole).width, 9);
    // The last row's two bytes of padding may be missing.
    for (std::size_t size = 2; size < whole.size() - 2; ++size)
        EXPECT_EQ(error(whole.substr(0, size)), BitmapError::CutShort) << size;
}

TEST(Bitmap, RefusesWhatIsNoBitmap) {
    for (const char* text : {"", "B", "b", "GIF89a", "MB"})
        EXPECT_EQ(error(text), BitmapError::NotABitmap) << text;
    EXPECT_EQ(error(std::string(maximumBitmapBytes + 1, 'B')), BitmapError::TooLong);
    EXPECT_EQ(error("BM" + std::string(100, '\xFF')), BitmapError::UnknownHeader);
    std::string core = BitmapFile{1, 1, 24, {}, "\0\0\xFF\0"s}.bytes();
    core[14] = 12;
    EXPECT_EQ(error(core), BitmapError::UnknownHeader);
}

TEST(Bitmap, RefusesSizesThatAreNotShown) {
    const auto sized = [](std::int32_t width, std::int32_t height) {
        return BitmapFile{width, height, 1, {0, 0xFFFFFF}, std::string(10000, '\0')}.bytes();
    };
    constexpr std::int32_t smallest = std::numeric_limits<std::int32_t>::min();
    constexpr std::int32_t largest = std::numeric_limits<std::int32_t>::max();
    for (const auto& [width, height] :
         {std::pair{0, 1}, {1, 0}, {-1, 1}, {1025, 1}, {1, 65}, {1, -65}, {1, smallest}, {largest, largest}})
        EXPECT_EQ(error(sized(width, height)), BitmapError::BadSize) << width << " x " << height;
    EXPECT_EQ(image(sized(1024, 64)).leds.size(), 65536U);
    EXPECT_EQ(image(sized(1024, -64)).leds.size(), 65536U);
}

TEST(Bitmap, RefusesCompressionAndOtherDepths) {
    for (const std::uint32_t compression : {1U, 2U, 3U, 4U, 0xFFFFFFFFU}) {
        BitmapFile file{1, 1, 8, {0}, std::string(100, '\0')};
        file.compression = compression;
        EXPECT_EQ(error(file.bytes()), BitmapError::Compressed) << compression;
    }
    for (const std::uint32_t depth : {0U, 2U, 3U, 16U, 25U, 64U, 65535U})
        EXPECT_EQ(error(BitmapFile{1, 1, depth, {}, std::string(100, '\0')}.bytes()),
                  BitmapError::UnknownDepth)
            << depth;
}

TEST(Bitmap, RefusesPixelsThatLieOutsideTheFile) {
    std::string bytes = BitmapFile{1, 1, 24, {}, "\0\0\xFF\0"s}.bytes();
    bytes.replace(10, 4, "\xFF\xFF\xFF\xFF");
    EXPECT_EQ(error(bytes), BitmapError::CutShort);
}

TEST(Bitmap, HasAWordForEveryError) {
    for (int i = 0; i <= static_cast<int>(BitmapError::BadSize); ++i)
        EXPECT_NE(description(static_cast<BitmapError>(i)), "cannot be read") << i;
}

} // namespace
} // namespace orvista
