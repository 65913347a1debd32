#pragma once

#include "display/LedRaster.h"
#include "display/PixelImage.h"

namespace orvista {

/// Draws a panel as it looks: lenses on a dark board, dull where they are off, with a glow where they are
/// lit. \param cell side of one lens' square in pixels, at least 1
PixelImage drawPanel(const LedRaster& raster, int cell);

struct PixelSize {
    int width;
    int height;
};
/// Of such a picture.
PixelSize drawnSize(PanelSize panel, int cell);

} // namespace orvista
