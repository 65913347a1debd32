#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace orvista {

/// A BMP file for tests; what it says of itself need not be true.
struct BitmapFile {
    std::int32_t width = 0;
    std::int32_t height = 0; ///< negative: the first row is the top one
    std::uint32_t depth = 24;
    std::vector<std::uint32_t> palette; ///< 0xRRGGBB
    std::string pixels;                 ///< as stored, padding included
    std::uint32_t compression = 0;
    std::uint32_t headerSize = 40;
    std::uint32_t coloursUsed = 0;

    std::string bytes() const {
        std::string text = "BM" + number(0) + number(0) +
                           number(14 + headerSize + 4 * static_cast<std::uint32_t>(palette.size()));
        text += number(headerSize) + number(static_cast<std::uint32_t>(width)) +
                number(static_cast<std::uint32_t>(height)) + number(1 | depth << 16);
        text += number(compression) + number(0) + number(0) + number(0) + number(coloursUsed) + number(0);
        text.resize(14 + headerSize, '\0');
        for (const std::uint32_t colour : palette)
            text += number(colour);
        return text + pixels;
    }

    /// Four bytes, lowest first.
    static std::string number(std::uint32_t value) {
        std::string text;
        for (int i = 0; i < 4; ++i, value >>= 8)
            text += static_cast<char>(value & 0xFF);
        return text;
    }
};

} // namespace orvista
