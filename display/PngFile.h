#pragma once

#include "display/PixelImage.h"

#include <string>

namespace orvista {

/// The bytes of a PNG file of the picture, the same each time.
std::string pngFile(const PixelImage& picture);

} // namespace orvista
