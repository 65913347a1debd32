#pragma once

#include "display/PixelImage.h"

#include <string>

namespace orvista {

/// The bytes of a PNG file of the picture, the same on every system. Repeated pixels are written once: a
/// panel's lenses are alike, so that the file is small.
std::string pngFile(const PixelImage& picture);

} // namespace orvista
