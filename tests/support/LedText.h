#pragma once

#include "display/LedRaster.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace orvista::testing {

/// What a panel shows as ledRasterFromText() reads it: one line per row, every line ends with LF.
inline std::string ledText(const LedRaster& raster) {
    constexpr std::string_view letters = ".RGO"; // in the order of Led
    std::string text;
    for (int y = 0; y < raster.rows(); ++y) {
        for (int x = 0; x < raster.columns(); ++x)
            text += letters.at(static_cast<std::size_t>(raster.at(x, y)));
        text += '\n';
    }
    return text;
}

} // namespace orvista::testing
