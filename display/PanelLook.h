#pragma once

#include "display/LedRaster.h"
#include "display/PixelImage.h"

/// The hardware's own colours and measures: they do not follow the desktop's palette.
namespace orvista::panelLook {

inline constexpr Pixel boardColour{16, 17, 19};
inline constexpr Pixel rimColour{44, 46, 50};
inline constexpr Pixel offCentre{50, 46, 43};
inline constexpr Pixel offEdge{30, 28, 27};

/// Radius of a lens in cells; a lit one looks a little larger.
inline constexpr double lensRadius = 0.4;
inline constexpr double lightRadius = lensRadius + 0.04;
/// A light's glow reaches this many cells from its centre.
inline constexpr double glowReach = 1.25;

/// How much of what it falls on a glow covers: beside its light, at the bend of its fading, which comes at
/// that share of its reach, and nothing at its end.
inline constexpr double glowCover = 0.47;
inline constexpr double glowBend = 0.4;
inline constexpr double glowCoverAtBend = 0.19;
/// A light fades from its core's colour to that of its lens within this share of its radius.
inline constexpr double coreShare = 0.55;

/// Width of the board's rim around the lenses, in pixels, for lenses in squares of that side.
constexpr int rimOf(int cell) {
    return cell + cell / 2;
}

struct Light {
    Pixel core;
    Pixel lens;
};

/// Of an LED that is lit.
constexpr Light lightOf(Led led) {
    switch (led) {
    case Led::Red:
        return {{255, 150, 120}, {255, 36, 22}};
    case Led::Green:
        return {{210, 255, 170}, {70, 235, 50}};
    default:
        return {{255, 226, 150}, {255, 150, 12}};
    }
}

} // namespace orvista::panelLook
