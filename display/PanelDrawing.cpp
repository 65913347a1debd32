#include "display/PanelDrawing.h"

#include "display/PanelLook.h"

#include <algorithm>

namespace orvista {

namespace {

using namespace panelLook;

/// Lays the sprite over the picture, its centre in the middle of the square that begins at (left, top).
void lay(PixelImage& picture, const Sprite& sprite, int left, int top, int cell) {
    const int overhang = (sprite.side - cell) / 2;
    const int firstX = left - overhang;
    const int firstY = top - overhang;
    const int fromX = std::max(0, -firstX);
    const int untilX = std::min(sprite.side, picture.width - firstX);
    const int untilY = std::min(sprite.side, picture.height - firstY);
    for (int y = std::max(0, -firstY); y < untilY; ++y) {
        for (int x = fromX; x < untilX; ++x) {
            const Sprite::Dot& dot = sprite.dots[static_cast<std::size_t>(y * sprite.side + x)];
            if (dot.cover > 0)
                picture.at(firstX + x, firstY + y) = dot.over(picture.at(firstX + x, firstY + y));
        }
    }
}

void fill(PixelImage& picture, int margin, Pixel colour) {
    for (int y = margin; y < picture.height - margin; ++y)
        for (int x = margin; x < picture.width - margin; ++x)
            picture.at(x, y) = colour;
}

/// The board with all lenses off.
PixelImage darkPanel(PanelSize size, int cell) {
    const int rim = rimOf(cell);
    const auto [width, height] = drawnSize(size, cell);
    PixelImage picture(width, height);
    fill(picture, 0, rimColour);
    fill(picture, std::max(1, rim / 3), boardColour);
    const Sprite lens = lensSprite(cell);
    for (int y = 0; y < size.rows; ++y)
        for (int x = 0; x < size.columns; ++x)
            lay(picture, lens, rim + x * cell, rim + y * cell, cell);
    return picture;
}

} // namespace

PixelSize drawnSize(PanelSize panel, int cell) {
    return {panel.columns * cell + 2 * rimOf(cell), panel.rows * cell + 2 * rimOf(cell)};
}

PanelDrawing::PanelDrawing(PanelSize size, int cell)
    : cell_(cell),
      dark_(darkPanel(size, cell)),
      lights_{lightSprite(cell, Led::Red), lightSprite(cell, Led::Green), lightSprite(cell, Led::Orange)} {}

PixelImage PanelDrawing::draw(const LedRaster& raster) const {
    const int rim = rimOf(cell_);
    PixelImage picture = dark_;
    for (int y = 0; y < raster.rows(); ++y)
        for (int x = 0; x < raster.columns(); ++x)
            if (const Led led = raster.at(x, y); led != Led::Off)
                lay(picture, lights_[static_cast<std::size_t>(led) - 1], rim + x * cell_, rim + y * cell_,
                    cell_);
    return picture;
}

PixelImage drawPanel(const LedRaster& raster, int cell) {
    return PanelDrawing(raster.size(), cell).draw(raster);
}

} // namespace orvista
