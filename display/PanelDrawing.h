#pragma once

#include "display/LedRaster.h"
#include "display/LedSprites.h"
#include "display/PixelImage.h"

#include <array>

namespace orvista {

/// Draws panels of one size as they look: lenses on a dark board, dull where they are off, with a glow where
/// they are lit.
class PanelDrawing {
public:
    /// \param cell side of one lens' square in pixels, at least 1
    PanelDrawing(PanelSize size, int cell);
    /// \param raster of that size
    PixelImage draw(const LedRaster& raster) const;

private:
    int cell_;
    PixelImage dark_;
    std::array<Sprite, 3> lights_; ///< of red, green and orange
};

/// One such picture.
PixelImage drawPanel(const LedRaster& raster, int cell);

struct PixelSize {
    int width;
    int height;
};
/// Of such a picture.
PixelSize drawnSize(PanelSize panel, int cell);

} // namespace orvista
