#pragma once

#include "display/PixelImage.h"

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <zlib.h>

namespace orvista::testing {

/// Reads a PNG file of 8 bits, of colours or with a palette, whose rows are not filtered.
class PngReader {
public:
    /// \throws std::runtime_error for anything else
    explicit PngReader(std::string_view bytes) : bytes_(bytes) {
        expect(bytes_.substr(0, 8) == "\x89PNG\r\n\x1A\n", "mark");
        for (std::size_t at = 8; at < bytes_.size(); at += 12 + word(at))
            readChunk(at);
        expect(hasEnd_, "end");
    }

    bool hasPalette() const { return depthAndKind_ == "\x08\x03"; }

    PixelImage picture() const {
        const std::size_t pixelSize = hasPalette() ? 1 : 3;
        const std::size_t rowSize = 1 + pixelSize * static_cast<std::size_t>(width_);
        std::string rows(rowSize * static_cast<std::size_t>(height_), '\0');
        auto size = static_cast<uLongf>(rows.size());
        expect(uncompress(reinterpret_cast<Bytef*>(rows.data()), &size,
                          reinterpret_cast<const Bytef*>(data_.data()),
                          static_cast<uLong>(data_.size())) == Z_OK &&
                   size == rows.size(),
               "pixels");
        PixelImage read(width_, height_);
        for (int y = 0; y < height_; ++y) {
            const std::string_view row =
                std::string_view(rows).substr(static_cast<std::size_t>(y) * rowSize, rowSize);
            expect(row[0] == 0, "filter");
            for (int x = 0; x < width_; ++x)
                read.at(x, y) = pixel(row.substr(1 + static_cast<std::size_t>(x) * pixelSize, pixelSize));
        }
        return read;
    }

private:
    static void expect(bool holds, const std::string& what) {
        if (!holds)
            throw std::runtime_error("PNG: " + what);
    }
    std::uint32_t word(std::size_t at) const {
        expect(at + 4 <= bytes_.size(), "length");
        std::uint32_t value = 0;
        for (const char byte : bytes_.substr(at, 4))
            value = value * 256 + static_cast<unsigned char>(byte);
        return value;
    }
    void readChunk(std::size_t at) {
        const std::string_view data = bytes_.substr(at + 8, word(at));
        const std::string_view named = bytes_.substr(at + 4, 4 + data.size());
        expect(crc32(0, reinterpret_cast<const Bytef*>(named.data()), static_cast<uInt>(named.size())) ==
                   word(at + 8 + data.size()),
               "sum");
        const std::string_view name = named.substr(0, 4);
        if (name == "IHDR") {
            width_ = static_cast<int>(word(at + 8));
            height_ = static_cast<int>(word(at + 12));
            depthAndKind_ = data.substr(8, 2);
            expect(hasPalette() || depthAndKind_ == "\x08\x02", "kind");
        } else if (name == "PLTE") {
            palette_ = data;
        } else if (name == "IDAT") {
            data_ += data;
        } else {
            expect(name == "IEND", "chunk");
            hasEnd_ = true;
        }
    }
    Pixel pixel(std::string_view bytes) const {
        if (hasPalette())
            bytes = palette_.substr(3 * std::size_t{static_cast<unsigned char>(bytes[0])}, 3);
        expect(bytes.size() == 3, "palette");
        return {static_cast<std::uint8_t>(bytes[0]), static_cast<std::uint8_t>(bytes[1]),
                static_cast<std::uint8_t>(bytes[2])};
    }

    std::string_view bytes_;
    int width_ = 0;
    int height_ = 0;
    std::string_view depthAndKind_;
    std::string_view palette_;
    std::string data_;
    bool hasEnd_ = false;
};

} // namespace orvista::testing
