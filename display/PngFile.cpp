#include "display/PngFile.h"

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

std::string compressedRows(const PixelImage& picture) {
    Compression compression;
    const auto width = static_cast<std::size_t>(picture.width);
    std::string row;
    for (std::size_t start = 0; start < picture.pixels.size(); start += width) {
        row.assign(1, '\0'); // the row is not filtered
        for (std::size_t i = start; i < start + width; ++i)
            for (const std::uint8_t part :
                 {picture.pixels[i].red, picture.pixels[i].green, picture.pixels[i].blue})
                row.push_back(static_cast<char>(part));
        compression.add(row);
    }
    return compression.finish();
}

} // namespace

std::string pngFile(const PixelImage& picture) {
    using namespace std::string_literals;
    const std::string head = number(static_cast<std::uint32_t>(picture.width)) +
                             number(static_cast<std::uint32_t>(picture.height)) +
                             "\x08\x02\0\0\0"s; // 8 bits for each of red, green and blue
    return "\x89PNG\r\n\x1A\n" + chunk("IHDR", head) + chunk("IDAT", compressedRows(picture)) +
           chunk("IEND", {});
}

} // namespace orvista
