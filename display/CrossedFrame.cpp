#include "display/CrossedFrame.h"

#include "display/LedFont.h"
#include "display/LedRaster.h"

#include <algorithm>

namespace orvista {

namespace {

constexpr std::size_t maximumName = 80;
constexpr int narrowest = 32;
constexpr int besideName = 4; ///< between the name and the frame's sides

void drawCross(LedRaster& raster) {
    const int right = raster.columns() - 1;
    const int bottom = raster.rows() - 1;
    for (int x = 0; x <= right; ++x) {
        const int y = (x * bottom + right / 2) / right;
        for (const int row : {0, bottom, y, bottom - y})
            raster.set(x, row, Led::Red);
    }
    for (const int column : {0, right})
        raster.fill(column, 0, 1, raster.rows(), Led::Red);
}

void drawName(LedRaster& raster, std::string_view name) {
    constexpr LedFont font = LedFont::Small5x7;
    const int width = static_cast<int>(name.size()) * cellWidth(font);
    const int left = (raster.columns() - width + 1) / 2;
    const int top = (raster.rows() - cellHeight(font)) / 2;
    raster.fill(left - 1, top - 1, width + 1, cellHeight(font) + 2, Led::Off);
    for (std::size_t i = 0; i < name.size(); ++i) {
        const Glyph& picture = glyph(font, static_cast<unsigned char>(name[i]));
        for (int y = 0; y < cellHeight(font); ++y)
            for (int x = 0; x < cellWidth(font); ++x)
                if ((picture.rows[static_cast<std::size_t>(y)] & 0x80 >> x) != 0)
                    raster.set(left + static_cast<int>(i) * cellWidth(font) + x, top + y, Led::Orange);
    }
}

} // namespace

LedImage crossedFrame(std::string_view name) {
    name = name.substr(0, maximumName);
    const int nameWidth = static_cast<int>(name.size()) * cellWidth(LedFont::Small5x7);
    LedRaster raster({std::max(narrowest, nameWidth + 2 * besideName)});
    drawCross(raster);
    drawName(raster, name);
    LedImage image;
    image.isStandIn = true;
    image.width = raster.columns();
    image.height = raster.rows();
    image.leds = raster.leds();
    return image;
}

} // namespace orvista
