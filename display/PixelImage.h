#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace orvista {

/// A colour of a picture, 0 to 255 each.
struct Pixel {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    bool operator==(const Pixel&) const = default;
};

/// A picture without a window: row by row from the top left.
struct PixelImage {
    PixelImage(int columns, int lines)
        : width(columns),
          height(lines),
          pixels(static_cast<std::size_t>(columns) * static_cast<std::size_t>(lines)) {}

    /// Unchecked.
    Pixel& at(int x, int y) {
        return pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                      static_cast<std::size_t>(x)];
    }

    int width;
    int height;
    std::vector<Pixel> pixels;
};

} // namespace orvista
