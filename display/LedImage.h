#pragma once

#include "display/LedRaster.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace orvista {

/// A bitmap as the panel can show it.
struct LedImage {
    /// A picture of greys alone is a stencil: its dark half (Led::Orange here, standing for "ink") takes the
    /// command's foreground colour and the rest its background colour, as monochrome bitmaps are painted
    /// on Windows. Any other picture brings its own colours.
    bool isStencil = false;
    int width = 0;
    int height = 0;
    std::vector<Led> leds{}; ///< row by row from the top left
    /// A mark for a bitmap that is not there: it takes no room, so that the page moves as it does without.
    bool isStandIn = false;
    bool operator==(const LedImage&) const = default;
};

/// Why a bitmap cannot be shown.
enum class BitmapError {
    TooLong,       ///< more than maximumBitmapBytes
    NotABitmap,    ///< does not begin as a BMP file
    CutShort,      ///< header, palette or pixels are not all there
    UnknownHeader, ///< not the 40-byte header or one of its extensions
    Compressed,
    UnknownDepth, ///< other than 1, 4, 8, 24 or 32 bits a pixel
    BadSize,      ///< no pixels, or more than maximumBitmapWidth x maximumBitmapHeight
    NotReadable   ///< the file cannot be read
};

inline constexpr std::size_t maximumBitmapBytes = std::size_t{512} * 1024;
inline constexpr int maximumBitmapWidth = 1024;
inline constexpr int maximumBitmapHeight = 64;

/// Reads an uncompressed BMP file of 1, 4, 8, 24 or 32 bits a pixel, rows in either order. A dot's red and
/// green diode light where the pixel's red and green are 128 or more; blue and alpha do not count. The dark
/// half of a grey picture is below 128.
std::variant<LedImage, BitmapError> readBitmap(std::string_view bytes);

/// In words, for a log: "is compressed".
std::string_view description(BitmapError error);

} // namespace orvista
