#pragma once

#include "display/PixelImage.h"
#include "script/Styles.h"

#include <vector>

/// How a lens looks, and its light: whoever draws panels lays these over each other, so that glows that meet
/// are mixed alike everywhere.
namespace orvista {

/// A square picture that is laid over others.
struct Sprite {
    /// A pixel: its colour, as far as it covers what it falls on.
    struct Dot {
        double red = 0; ///< 0 to 255, times the cover
        double green = 0;
        double blue = 0;
        double cover = 0; ///< 0 to 1

        Pixel over(Pixel below) const;
    };
    int side = 0;
    std::vector<Dot> dots; ///< row by row
};

/// A lens that is off, on its square of the board. \param cell side of the square in pixels, at least 1
Sprite lensSprite(int cell);

/// A light with its glow, which reaches into the eight squares around its own; its centre is that of its
/// square. To be laid row by row from the top left, over all lenses. \param led that is lit
Sprite lightSprite(int cell, Led led);

} // namespace orvista
