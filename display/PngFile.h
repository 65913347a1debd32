#pragma once

#include "display/PixelImage.h"

#include <string>

namespace orvista {

/// The bytes of a PNG file of the picture, the same each time.
std::string pngFile(const PixelImage& picture);

/// The same picture in fewer bytes: with a palette where it has at most 256 colours.
std::string smallPngFile(const PixelImage& picture);

} // namespace orvista
