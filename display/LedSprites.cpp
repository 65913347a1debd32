#include "display/LedSprites.h"

#include "display/PanelLook.h"

#include <algorithm>
#include <cmath>

namespace orvista {

namespace {

using namespace panelLook;
using Dot = Sprite::Dot;

Pixel mixed(Pixel from, Pixel to, double share) {
    const auto mix = [share](std::uint8_t a, std::uint8_t b) {
        return static_cast<std::uint8_t>(std::lround(a + (b - a) * share));
    };
    return {mix(from.red, to.red), mix(from.green, to.green), mix(from.blue, to.blue)};
}

Dot covering(Pixel colour, double cover) {
    return {colour.red * cover, colour.green * cover, colour.blue * cover, cover};
}

/// One laid over another.
Dot over(const Dot& upper, const Dot& lower) {
    const double seen = 1 - upper.cover;
    return {upper.red + lower.red * seen, upper.green + lower.green * seen, upper.blue + lower.blue * seen,
            upper.cover + lower.cover * seen};
}

/// How much of a pixel a disc covers, by the distance of their centres.
double discCover(double distance, double radius) {
    return std::clamp(radius - distance + 0.5, 0.0, 1.0);
}

/// \param dotAt by the distance from the sprite's centre, in pixels
template <typename Dots>
Sprite roundSprite(int side, Dots dotAt) {
    Sprite made{side, {}};
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x)
            made.dots.push_back(dotAt(std::hypot(x + 0.5 - side / 2.0, y + 0.5 - side / 2.0)));
    return made;
}

Dot glowDot(const Light& light, double share) {
    // Fades quickly near the light and slowly far from it.
    return covering(light.lens, share < glowBend
                                    ? std::lerp(glowCover, glowCoverAtBend, share / glowBend)
                                    : std::lerp(glowCoverAtBend, 0.0, (share - glowBend) / (1 - glowBend)));
}

Pixel lightColour(const Light& light, double share) {
    const Pixel edge = mixed(light.lens, {}, 0.13);
    return share < coreShare ? mixed(light.core, light.lens, share / coreShare)
                             : mixed(light.lens, edge, (share - coreShare) / (1 - coreShare));
}

} // namespace

Pixel Sprite::Dot::over(Pixel below) const {
    // Rounded by hand, for what is never negative: pictures are drawn by the thousand.
    const auto mix = [this](double upper, std::uint8_t lower) {
        return static_cast<std::uint8_t>(upper + lower * (1 - cover) + 0.5);
    };
    return {mix(red, below.red), mix(green, below.green), mix(blue, below.blue)};
}

Sprite lensSprite(int cell) {
    const double radius = lensRadius * cell;
    return roundSprite(cell, [radius](double distance) {
        const Pixel lens = mixed(offCentre, offEdge, std::min(distance / radius, 1.0));
        return over(covering(lens, discCover(distance, radius)), covering(boardColour, 1));
    });
}

Sprite lightSprite(int cell, Led led) {
    const Light light = lightOf(led);
    const double reach = glowReach * cell;
    const double radius = lightRadius * cell;
    return roundSprite(2 * static_cast<int>(std::ceil(reach)) + cell % 2, [&](double distance) {
        const Pixel lit = lightColour(light, std::min(distance / radius, 1.0));
        return over(covering(lit, discCover(distance, radius)),
                    glowDot(light, std::min(distance / reach, 1.0)));
    });
}

} // namespace orvista
