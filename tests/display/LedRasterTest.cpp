#include "display/LedRaster.h"

#include "tests/support/LedText.h"

#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>

namespace orvista {
namespace {

using testing::ledText;

TEST(LedRaster, IsDarkAtFirst) {
    const LedRaster raster({3, 2});
    EXPECT_EQ(ledText(raster), "...\n...\n");
    EXPECT_EQ(raster.columns(), 3);
    EXPECT_EQ(raster.rows(), 2);
    EXPECT_EQ(LedRaster({128}).rows(), 16);
}

TEST(LedRaster, RefusesSizesThatNoPanelHas) {
    EXPECT_THROW(LedRaster({0}), std::invalid_argument);
    EXPECT_THROW(LedRaster({-1}), std::invalid_argument);
    EXPECT_THROW(LedRaster({8, 0}), std::invalid_argument);
    EXPECT_THROW(LedRaster({4097}), std::invalid_argument);
    EXPECT_NO_THROW(LedRaster({4096}));
    EXPECT_NO_THROW(LedRaster({1}));
}

TEST(LedRaster, IgnoresDotsOutside) {
    LedRaster raster({2, 2});
    raster.set(0, 0, Led::Red);
    raster.set(1, 1, Led::Orange);
    for (const auto& [x, y] : {std::pair{-1, 0}, {2, 0}, {0, -1}, {0, 2}})
        raster.set(x, y, Led::Green);
    EXPECT_EQ(ledText(raster), "R.\n.O\n");
}

TEST(LedRaster, FillsTheVisiblePartOfARectangle) {
    LedRaster raster({4, 3});
    raster.fill(2, -5, 10, 7, Led::Green);
    EXPECT_EQ(ledText(raster), "..GG\n..GG\n....\n");
    raster.fill(-3, 2, 4, 1, Led::Red);
    EXPECT_EQ(ledText(raster), "..GG\n..GG\nR...\n");
    raster.fill(4, 0, 1, 1, Led::Red);
    raster.fill(0, 0, 0, 3, Led::Red);
    raster.fill(0, 0, -2, 3, Led::Red);
    EXPECT_EQ(ledText(raster), "..GG\n..GG\nR...\n");
    constexpr int largest = std::numeric_limits<int>::max();
    raster.fill(1, 1, largest, largest, Led::Orange);
    EXPECT_EQ(ledText(raster), "..GG\n.OOO\nROOO\n");
}

TEST(LedRaster, ReadsItsOwnText) {
    const LedRaster raster = ledRasterFromText("\n.RGO\nOGR.\n\n");
    EXPECT_EQ(raster.columns(), 4);
    EXPECT_EQ(raster.rows(), 2);
    EXPECT_EQ(raster.at(1, 0), Led::Red);
    EXPECT_EQ(raster.at(2, 0), Led::Green);
    EXPECT_EQ(raster.at(0, 1), Led::Orange);
    EXPECT_EQ(ledText(raster), ".RGO\nOGR.\n");
    EXPECT_EQ(raster, ledRasterFromText(ledText(raster)));
}

TEST(LedRaster, RefusesTextsThatShowNoPanel) {
    for (const char* text : {"", "\n\n", "..\n...\n", "..\n\n..", "r", "..X"})
        EXPECT_THROW(ledRasterFromText(text), std::invalid_argument) << text;
}

} // namespace
} // namespace orvista
