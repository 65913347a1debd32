#include "display/PanelDrawing.h"

#include "display/LedSprites.h"
#include "display/PanelLook.h"

#include <algorithm>
#include <array>

namespace orvista {

namespace {

using namespace panelLook;

/// Lays the sprite over the picture, its centre in the middle of the square that begins at (left, top).
void lay(PixelImage& picture, const Sprite& sprite, int left, int top, int cell) {
    const int overhang = (sprite.side - cell) / 2;
    auto dot = sprite.dots.begin();
    for (int y = top - overhang; y < top - overhang + sprite.side; ++y) {
        for (int x = left - overhang; x < left - overhang + sprite.side; ++x, ++dot) {
            if (x >= 0 && x < picture.width && y >= 0 && y < picture.height)
                picture.at(x, y) = dot->over(picture.at(x, y));
        }
    }
}

void fill(PixelImage& picture, int margin, Pixel colour) {
    for (int y = margin; y < picture.height - margin; ++y)
        for (int x = margin; x < picture.width - margin; ++x)
            picture.at(x, y) = colour;
}

} // namespace

PixelSize drawnSize(PanelSize panel, int cell) {
    return {panel.columns * cell + 2 * rimOf(cell), panel.rows * cell + 2 * rimOf(cell)};
}

PixelImage drawPanel(const LedRaster& raster, int cell) {
    const int rim = rimOf(cell);
    const auto [width, height] = drawnSize(raster.size(), cell);
    PixelImage picture(width, height);
    fill(picture, 0, rimColour);
    fill(picture, std::max(1, rim / 3), boardColour);

    const auto layAll = [&](auto&& spriteAt) {
        for (int y = 0; y < raster.rows(); ++y)
            for (int x = 0; x < raster.columns(); ++x)
                if (const Sprite* const sprite = spriteAt(raster.at(x, y)))
                    lay(picture, *sprite, rim + x * cell, rim + y * cell, cell);
    };
    const Sprite lens = lensSprite(cell);
    layAll([&](Led) { return &lens; });
    const std::array lights{lightSprite(cell, Led::Red), lightSprite(cell, Led::Green),
                            lightSprite(cell, Led::Orange)};
    layAll([&](Led led) { return led == Led::Off ? nullptr : &lights[static_cast<std::size_t>(led) - 1]; });
    return picture;
}

} // namespace orvista
