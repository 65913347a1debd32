#include "display/LedImage.h"

#include <algorithm>
#include <cstdlib>
#include <optional>

namespace orvista {

namespace {

constexpr std::size_t fileHeaderSize = 14;
constexpr std::size_t infoHeaderSize = 40;
constexpr std::size_t largestInfoHeaderSize = 124;
constexpr std::uint32_t uncompressed = 0;
constexpr std::uint32_t bitFields = 3;
constexpr std::uint8_t half = 128;

struct FilePixel {
    std::uint8_t blue = 0;
    std::uint8_t green = 0;
    std::uint8_t red = 0;
};

class FileBytes {
public:
    explicit FileBytes(std::string_view bytes) : bytes_(bytes) {}
    std::size_t size() const { return bytes_.size(); }
    std::uint8_t byte(std::size_t at) const { return static_cast<std::uint8_t>(bytes_[at]); }
    std::uint32_t word(std::size_t at) const {
        return static_cast<std::uint32_t>(byte(at)) | static_cast<std::uint32_t>(byte(at + 1)) << 8;
    }
    std::uint32_t doubleWord(std::size_t at) const { return word(at) | word(at + 2) << 16; }
    FilePixel pixel(std::size_t at) const { return {byte(at), byte(at + 1), byte(at + 2)}; }

private:
    std::string_view bytes_;
};

/// What the headers say, checked against the length of the file.
struct Layout {
    int width = 0;
    int height = 0;
    bool isTopDown = false;
    std::uint32_t depth = 0;
    std::size_t rowSize = 0; ///< padding included
    std::size_t pixelsAt = 0;
    std::vector<FilePixel> palette;
};

/// Masks that leave the bytes where an uncompressed file has them.
bool hasUsualMasks(const FileBytes& bytes, std::uint32_t depth) {
    constexpr std::size_t masksAt = fileHeaderSize + infoHeaderSize;
    return depth == 32 && bytes.size() >= masksAt + 12 && bytes.doubleWord(masksAt) == 0x00FF0000 &&
           bytes.doubleWord(masksAt + 4) == 0x0000FF00 && bytes.doubleWord(masksAt + 8) == 0x000000FF;
}

std::optional<BitmapError> readSize(const FileBytes& bytes, Layout& layout) {
    const auto width = static_cast<std::int32_t>(bytes.doubleWord(18));
    const auto height = static_cast<std::int32_t>(bytes.doubleWord(22));
    const bool isPossible = width >= 1 && width <= maximumBitmapWidth && height != 0 &&
                            height >= -maximumBitmapHeight && height <= maximumBitmapHeight;
    if (!isPossible)
        return BitmapError::BadSize;
    layout.width = width;
    layout.height = std::abs(height);
    layout.isTopDown = height < 0;
    return std::nullopt;
}

std::optional<BitmapError> readPalette(const FileBytes& bytes, std::size_t headerSize, Layout& layout) {
    if (layout.depth > 8)
        return std::nullopt;
    const std::uint32_t possible = 1U << layout.depth;
    const std::uint32_t stated = bytes.doubleWord(46);
    const std::uint32_t count = stated == 0 ? possible : std::min(stated, possible);
    const std::size_t start = fileHeaderSize + headerSize;
    if (bytes.size() < start + std::size_t{count} * 4)
        return BitmapError::CutShort;
    for (std::uint32_t i = 0; i < count; ++i)
        layout.palette.push_back(bytes.pixel(start + std::size_t{i} * 4));
    return std::nullopt;
}

std::optional<BitmapError> readFormat(const FileBytes& bytes, Layout& layout) {
    layout.depth = bytes.word(28);
    const std::uint32_t compression = bytes.doubleWord(30);
    if (compression != uncompressed && !(compression == bitFields && hasUsualMasks(bytes, layout.depth)))
        return BitmapError::Compressed;
    constexpr std::uint32_t depths[] = {1, 4, 8, 24, 32};
    if (std::ranges::find(depths, layout.depth) == std::end(depths))
        return BitmapError::UnknownDepth;
    return std::nullopt;
}

std::optional<BitmapError> placePixels(const FileBytes& bytes, Layout& layout) {
    const std::size_t bits = static_cast<std::size_t>(layout.width) * layout.depth;
    layout.rowSize = (bits + 31) / 32 * 4;
    layout.pixelsAt = bytes.doubleWord(10);
    // Some programs leave out the padding of the last row.
    const std::size_t needed = layout.rowSize * static_cast<std::size_t>(layout.height - 1) + (bits + 7) / 8;
    if (layout.pixelsAt > bytes.size() || bytes.size() - layout.pixelsAt < needed)
        return BitmapError::CutShort;
    return std::nullopt;
}

std::optional<BitmapError> readLayout(const FileBytes& bytes, Layout& layout) {
    if (bytes.size() > maximumBitmapBytes)
        return BitmapError::TooLong;
    if (bytes.size() < 2 || bytes.byte(0) != 'B' || bytes.byte(1) != 'M')
        return BitmapError::NotABitmap;
    if (bytes.size() < fileHeaderSize + 4)
        return BitmapError::CutShort;
    const std::size_t headerSize = bytes.doubleWord(fileHeaderSize);
    if (headerSize < infoHeaderSize || headerSize > largestInfoHeaderSize)
        return BitmapError::UnknownHeader;
    if (bytes.size() < fileHeaderSize + headerSize)
        return BitmapError::CutShort;
    if (const auto error = readSize(bytes, layout))
        return error;
    if (const auto error = readFormat(bytes, layout))
        return error;
    if (const auto error = readPalette(bytes, headerSize, layout))
        return error;
    return placePixels(bytes, layout);
}

/// A number beyond the palette is black.
FilePixel palettePixel(const FileBytes& bytes, const Layout& layout, std::size_t row, std::size_t x) {
    const std::size_t perByte = 8 / layout.depth;
    const std::uint32_t shift = 8 - layout.depth - static_cast<std::uint32_t>(x % perByte) * layout.depth;
    const std::uint32_t mask = (1U << layout.depth) - 1;
    const std::uint32_t number = bytes.byte(row + x / perByte) >> shift & mask;
    return number < layout.palette.size() ? layout.palette[number] : FilePixel{};
}

std::vector<FilePixel> readPixels(const FileBytes& bytes, const Layout& layout) {
    std::vector<FilePixel> pixels;
    pixels.reserve(static_cast<std::size_t>(layout.width) * static_cast<std::size_t>(layout.height));
    for (int y = 0; y < layout.height; ++y) {
        const int storedRow = layout.isTopDown ? y : layout.height - 1 - y;
        const std::size_t row = layout.pixelsAt + layout.rowSize * static_cast<std::size_t>(storedRow);
        for (std::size_t x = 0; x < static_cast<std::size_t>(layout.width); ++x)
            pixels.push_back(layout.depth <= 8 ? palettePixel(bytes, layout, row, x)
                                               : bytes.pixel(row + x * layout.depth / 8));
    }
    return pixels;
}

Led colourLed(FilePixel pixel) {
    return static_cast<Led>((pixel.red >= half ? 1 : 0) | (pixel.green >= half ? 2 : 0));
}

Led inkLed(FilePixel pixel) {
    return pixel.red < half ? Led::Orange : Led::Off;
}

} // namespace

std::variant<LedImage, BitmapError> readBitmap(std::string_view file) {
    const FileBytes bytes(file);
    Layout layout;
    if (const auto error = readLayout(bytes, layout))
        return *error;
    const auto pixels = readPixels(bytes, layout);
    const bool isStencil = std::ranges::all_of(
        pixels, [](FilePixel pixel) { return pixel.red == pixel.green && pixel.green == pixel.blue; });
    LedImage image{isStencil, layout.width, layout.height, {}};
    image.leds.reserve(pixels.size());
    std::ranges::transform(pixels, std::back_inserter(image.leds), isStencil ? inkLed : colourLed);
    return image;
}

std::string_view description(BitmapError error) {
    switch (error) {
    case BitmapError::TooLong:
        return "is larger than 512 KB";
    case BitmapError::NotABitmap:
        return "is not a BMP file";
    case BitmapError::CutShort:
        return "is cut short";
    case BitmapError::UnknownHeader:
        return "has an unknown header";
    case BitmapError::Compressed:
        return "is compressed";
    case BitmapError::UnknownDepth:
        return "has an unknown number of bits a pixel";
    case BitmapError::BadSize:
        return "is larger than 1024 x 64 dots, or empty";
    case BitmapError::NotReadable:
        return "cannot be read";
    }
    return "cannot be read";
}

} // namespace orvista
