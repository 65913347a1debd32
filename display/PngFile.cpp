#include "display/PngFile.h"

#include <array>
#include <cstdint>
#include <new>
#include <string_view>
#include <zlib.h>

// PNG (ISO/IEC 15948).
namespace orvista {

namespace {

/// A zlib stream (RFC 1950), taken piece by piece.
class Compression {
public:
    Compression() {
        if (deflateInit(&stream_, Z_BEST_COMPRESSION) != Z_OK)
            throw std::bad_alloc(); // the one failure of a stream of this kind
    }
    ~Compression() { deflateEnd(&stream_); }
    Compression(const Compression&) = delete;
    Compression& operator=(const Compression&) = delete;

    void add(std::string& bytes) { run(bytes, Z_NO_FLUSH); }
    /// Everything that was added, compressed.
    std::string finish() {
        std::string nothing;
        run(nothing, Z_FINISH);
        return std::move(out_);
    }

private:
    void run(std::string& bytes, int flush) {
        constexpr std::size_t pieceSize = std::size_t{1} << 16;
        std::string piece(pieceSize, '\0');
        stream_.next_in = reinterpret_cast<Bytef*>(bytes.data());
        stream_.avail_in = static_cast<uInt>(bytes.size());
        do {
            stream_.next_out = reinterpret_cast<Bytef*>(piece.data());
            stream_.avail_out = pieceSize;
            deflate(&stream_, flush);
            out_.append(piece, 0, pieceSize - stream_.avail_out);
        } while (stream_.avail_out == 0);
    }

    z_stream stream_{};
    std::string out_;
};

std::string number(std::uint32_t value) {
    return {static_cast<char>(value >> 24), static_cast<char>(value >> 16), static_cast<char>(value >> 8),
            static_cast<char>(value)};
}

std::string chunk(std::string_view kind, std::string_view data) {
    const std::string content = std::string(kind).append(data);
    const uLong sum =
        crc32(0, reinterpret_cast<const Bytef*>(content.data()), static_cast<uInt>(content.size()));
    return number(static_cast<std::uint32_t>(data.size())) + content +
           number(static_cast<std::uint32_t>(sum));
}

/// \param addPixel appends a pixel's bytes to a row
template <typename AddPixel>
std::string compressedRows(const PixelImage& picture, AddPixel addPixel) {
    Compression compression;
    const auto width = static_cast<std::size_t>(picture.width);
    std::string row;
    for (std::size_t start = 0; start < picture.pixels.size(); start += width) {
        row.assign(1, '\0'); // the row is not filtered
        for (std::size_t i = start; i < start + width; ++i)
            addPixel(row, picture.pixels[i]);
        compression.add(row);
    }
    return compression.finish();
}

/// The colours of a picture in the order they come, as long as they are few.
class Palette {
public:
    static constexpr std::size_t most = 256;

    explicit Palette(const PixelImage& picture) {
        for (const Pixel& pixel : picture.pixels) {
            Slot& slot = slotOf(pixel);
            if (slot.isTaken)
                continue;
            isComplete_ = colours_.size() < 3 * most;
            if (!isComplete_)
                return;
            slot = {pixel, static_cast<char>(colours_.size() / 3), true};
            for (const std::uint8_t part : {pixel.red, pixel.green, pixel.blue})
                colours_.push_back(static_cast<char>(part));
        }
    }
    bool isComplete() const { return isComplete_; }
    const std::string& colours() const { return colours_; }
    char numberOf(const Pixel& pixel) { return slotOf(pixel).number; }

private:
    struct Slot {
        Pixel pixel;
        char number = 0;
        bool isTaken = false;
    };

    /// Where the colour stands, or has its place.
    Slot& slotOf(const Pixel& pixel) {
        const std::uint32_t colour = pixel.red | pixel.green << 8U | pixel.blue << 16U;
        std::size_t at = (colour * 2654435761U) >> 22U;
        while (slots_[at].isTaken && slots_[at].pixel != pixel)
            at = (at + 1) % slots_.size();
        return slots_[at];
    }

    std::array<Slot, 4 * most> slots_{};
    std::string colours_;
    bool isComplete_ = true;
};

/// \param kind of its pixels, as the head says it
/// \param palette the chunk, or nothing
std::string pngOf(const PixelImage& picture, char kind, std::string_view palette, std::string_view rows) {
    using namespace std::string_literals;
    const std::string head = number(static_cast<std::uint32_t>(picture.width)) +
                             number(static_cast<std::uint32_t>(picture.height)) + "\x08"s + kind + "\0\0\0"s;
    return ("\x89PNG\r\n\x1A\n" + chunk("IHDR", head))
        .append(palette)
        .append(chunk("IDAT", rows))
        .append(chunk("IEND", {}));
}

} // namespace

std::string pngFile(const PixelImage& picture) {
    constexpr char redGreenBlue = 2; // 8 bits for each
    return pngOf(picture, redGreenBlue, {}, compressedRows(picture, [](std::string& row, const Pixel& pixel) {
                     for (const std::uint8_t part : {pixel.red, pixel.green, pixel.blue})
                         row.push_back(static_cast<char>(part));
                 }));
}

std::string smallPngFile(const PixelImage& picture) {
    Palette palette(picture);
    if (!palette.isComplete())
        return pngFile(picture);
    constexpr char numbers = 3; // of 8 bits
    return pngOf(picture, numbers, chunk("PLTE", palette.colours()),
                 compressedRows(picture, [&palette](std::string& row, const Pixel& pixel) {
                     row.push_back(palette.numberOf(pixel));
                 }));
}

} // namespace orvista
