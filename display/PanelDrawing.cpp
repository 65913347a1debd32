#include "display/PanelDrawing.h"

#include "display/PanelLook.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace orvista {

namespace {

using namespace panelLook;

Pixel mixed(Pixel from, Pixel to, double share) {
    const auto mix = [share](std::uint8_t a, std::uint8_t b) {
        return static_cast<std::uint8_t>(std::lround(a + (b - a) * share));
    };
    return {mix(from.red, to.red), mix(from.green, to.green), mix(from.blue, to.blue)};
}

/// A small round picture that is laid over others.
struct Sprite {
    struct Dot {
        Pixel colour;
        double cover = 0; ///< 0 to 1
    };
    int side;
    std::vector<Dot> dots;
};

/// How much of a pixel a disc covers, by the distance of their centres.
double discCover(double distance, double radius) {
    return std::clamp(radius - distance + 0.5, 0.0, 1.0);
}

template <typename Dots>
Sprite sprite(int side, Dots dotAt) {
    Sprite made{side, {}};
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x)
            made.dots.push_back(dotAt(std::hypot(x + 0.5 - side / 2.0, y + 0.5 - side / 2.0)));
    return made;
}

Sprite offSprite(int cell) {
    const double radius = lensRadius * cell;
    return sprite(cell, [radius](double distance) {
        return Sprite::Dot{mixed(offCentre, offEdge, std::min(distance / radius, 1.0)),
                           discCover(distance, radius)};
    });
}

Sprite glowSprite(int cell, Led led) {
    const double reach = glowReach * cell;
    const Pixel lens = lightOf(led).lens;
    return sprite(2 * static_cast<int>(std::ceil(reach)) + cell % 2, [reach, lens](double distance) {
        // Fades quickly near the light and slowly far from it.
        const double share = std::min(distance / reach, 1.0);
        return Sprite::Dot{lens, share < glowBend
                                     ? std::lerp(glowCover, glowCoverAtBend, share / glowBend)
                                     : std::lerp(glowCoverAtBend, 0.0, (share - glowBend) / (1 - glowBend))};
    });
}

Sprite lightSprite(int cell, Led led) {
    const double radius = lightRadius * cell;
    const Light light = lightOf(led);
    return sprite(cell + 2, [radius, light](double distance) {
        const double share = std::min(distance / radius, 1.0);
        const Pixel edge = mixed(light.lens, {}, 0.13);
        const Pixel colour = share < coreShare
                                 ? mixed(light.core, light.lens, share / coreShare)
                                 : mixed(light.lens, edge, (share - coreShare) / (1 - coreShare));
        return Sprite::Dot{colour, discCover(distance, radius)};
    });
}

/// Lays the sprite over the picture, its centre in the middle of the square that begins at (left, top).
void lay(PixelImage& picture, const Sprite& sprite, int left, int top, int cell) {
    const int overhang = (sprite.side - cell) / 2;
    auto dot = sprite.dots.begin();
    for (int y = top - overhang; y < top - overhang + sprite.side; ++y) {
        for (int x = left - overhang; x < left - overhang + sprite.side; ++x, ++dot) {
            if (x >= 0 && x < picture.width && y >= 0 && y < picture.height)
                picture.at(x, y) = mixed(picture.at(x, y), dot->colour, dot->cover);
        }
    }
}

void fill(PixelImage& picture, int margin, Pixel colour) {
    for (int y = margin; y < picture.height - margin; ++y)
        for (int x = margin; x < picture.width - margin; ++x)
            picture.at(x, y) = colour;
}

} // namespace

PixelImage drawPanel(const LedRaster& raster, int cell) {
    const int rim = rimOf(cell);
    PixelImage picture(raster.columns() * cell + 2 * rim, raster.rows() * cell + 2 * rim);
    fill(picture, 0, rimColour);
    fill(picture, std::max(1, rim / 3), boardColour);

    const auto layAll = [&](Led led, const Sprite& sprite) {
        for (int y = 0; y < raster.rows(); ++y)
            for (int x = 0; x < raster.columns(); ++x)
                if (raster.at(x, y) == led)
                    lay(picture, sprite, rim + x * cell, rim + y * cell, cell);
    };
    layAll(Led::Off, offSprite(cell));
    constexpr std::array lit{Led::Red, Led::Green, Led::Orange};
    for (const Led led : lit)
        layAll(led, glowSprite(cell, led));
    for (const Led led : lit)
        layAll(led, lightSprite(cell, led));
    return picture;
}

} // namespace orvista
