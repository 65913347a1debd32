#include "display/PngFile.h"

#include <algorithm>
#include <array>
#include <string_view>

// PNG (ISO/IEC 15948) with the compressed form of RFC 1950 and RFC 1951, its fixed codes only.
namespace orvista {

namespace {

constexpr std::size_t shortestMatch = 3;
constexpr std::size_t longestMatch = 258;
constexpr std::size_t farthestMatch = 32768;

/// A code and the extra bits after it stand for a range of lengths or distances.
struct Range {
    std::uint16_t first;
    std::uint8_t extraBits;
};

constexpr std::array<Range, 29> lengthRanges{
    {{3, 0},  {4, 0},  {5, 0},  {6, 0},   {7, 0},   {8, 0},   {9, 0},   {10, 0},  {11, 1}, {13, 1},
     {15, 1}, {17, 1}, {19, 2}, {23, 2},  {27, 2},  {31, 2},  {35, 3},  {43, 3},  {51, 3}, {59, 3},
     {67, 4}, {83, 4}, {99, 4}, {115, 4}, {131, 5}, {163, 5}, {195, 5}, {227, 5}, {258, 0}}};

constexpr std::array<Range, 30> distanceRanges{
    {{1, 0},     {2, 0},     {3, 0},     {4, 0},      {5, 1},      {7, 1},     {9, 2},     {13, 2},
     {17, 3},    {25, 3},    {33, 4},    {49, 4},     {65, 5},     {97, 5},    {129, 6},   {193, 6},
     {257, 7},   {385, 7},   {513, 8},   {769, 8},    {1025, 9},   {1537, 9},  {2049, 10}, {3073, 10},
     {4097, 11}, {6145, 11}, {8193, 12}, {12289, 12}, {16385, 13}, {24577, 13}}};

template <std::size_t count>
std::size_t rangeOf(const std::array<Range, count>& ranges, std::size_t value) {
    const auto behind = std::ranges::upper_bound(ranges, value, {}, &Range::first);
    return static_cast<std::size_t>(behind - ranges.begin()) - 1;
}

/// Compresses with matches of earlier bytes, found by the last place of the same three bytes.
class Deflater {
public:
    explicit Deflater(std::string_view bytes) : bytes_(bytes), places_(tableSize, bytes.size()) {}

    std::string run() {
        putBits(1, 1); // the last block
        putBits(1, 2); // of fixed codes
        for (std::size_t at = 0; at < bytes_.size();) {
            const Match match = matchAt(at);
            if (match.length >= shortestMatch) {
                putMatch(match);
                at += match.length;
            } else {
                putSymbol(static_cast<unsigned char>(bytes_[at++]));
            }
        }
        putSymbol(256); // the end
        putBits(0, 7);  // up to a whole byte
        return std::move(out_);
    }

private:
    struct Match {
        std::size_t length = 0;
        std::size_t distance = 0;
    };

    Match matchAt(std::size_t at) {
        if (bytes_.size() - at < shortestMatch)
            return {};
        std::size_t& place = places_[hashAt(at)];
        const std::size_t earlier = place;
        place = at;
        if (earlier >= at || at - earlier > farthestMatch)
            return {};
        const std::string_view here = bytes_.substr(at, longestMatch);
        const auto end = std::ranges::mismatch(here, bytes_.substr(earlier, here.size())).in1;
        return {static_cast<std::size_t>(end - here.begin()), at - earlier};
    }

    std::size_t hashAt(std::size_t at) const {
        const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(bytes_[at + i]); };
        return (byte(0) * 40503U ^ byte(1) * 2654435U ^ byte(2) * 69069U) % tableSize;
    }

    void putMatch(Match match) {
        const std::size_t length = rangeOf(lengthRanges, match.length);
        putSymbol(257 + length);
        putBits(match.length - lengthRanges[length].first, lengthRanges[length].extraBits);
        const std::size_t distance = rangeOf(distanceRanges, match.distance);
        putCode(distance, 5);
        putBits(match.distance - distanceRanges[distance].first, distanceRanges[distance].extraBits);
    }

    /// A byte, the end or a length in its fixed code.
    void putSymbol(std::size_t symbol) {
        if (symbol < 144)
            putCode(0x30 + symbol, 8);
        else if (symbol < 256)
            putCode(0x190 + symbol - 144, 9);
        else if (symbol < 280)
            putCode(symbol - 256, 7);
        else
            putCode(0xC0 + symbol - 280, 8);
    }

    /// Codes begin with their highest bit, numbers with their lowest.
    void putCode(std::size_t code, int length) {
        for (int bit = length - 1; bit >= 0; --bit)
            putBits(code >> bit & 1, 1);
    }

    void putBits(std::size_t bits, int count) {
        pending_ |= bits << pendingCount_;
        for (pendingCount_ += count; pendingCount_ >= 8; pendingCount_ -= 8) {
            out_.push_back(static_cast<char>(pending_ & 0xFF));
            pending_ >>= 8;
        }
    }

    static constexpr std::size_t tableSize = 1U << 15;

    std::string_view bytes_;
    std::vector<std::size_t> places_;
    std::string out_;
    std::uint64_t pending_ = 0;
    int pendingCount_ = 0;
};

std::string number(std::uint32_t value) {
    return {static_cast<char>(value >> 24), static_cast<char>(value >> 16), static_cast<char>(value >> 8),
            static_cast<char>(value)};
}

std::uint32_t adler32(std::string_view bytes) {
    constexpr std::uint32_t modulus = 65521;
    std::uint32_t low = 1;
    std::uint32_t high = 0;
    for (const char byte : bytes) {
        low = (low + static_cast<unsigned char>(byte)) % modulus;
        high = (high + low) % modulus;
    }
    return high << 16 | low;
}

std::uint32_t crc32(std::string_view bytes) {
    std::uint32_t crc = 0xFFFFFFFF;
    for (const char byte : bytes) {
        crc ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = crc >> 1 ^ (crc & 1) * 0xEDB88320;
    }
    return ~crc;
}

std::string chunk(std::string_view kind, std::string_view data) {
    const std::string content = std::string(kind).append(data);
    return number(static_cast<std::uint32_t>(data.size())) + content + number(crc32(content));
}

} // namespace

std::string pngFile(const PixelImage& picture) {
    using namespace std::string_literals;
    std::string rows;
    rows.reserve(picture.pixels.size() * 3 + static_cast<std::size_t>(picture.height));
    for (std::size_t i = 0; i < picture.pixels.size(); ++i) {
        if (i % static_cast<std::size_t>(picture.width) == 0)
            rows.push_back(0); // the row is not filtered
        for (const std::uint8_t part :
             {picture.pixels[i].red, picture.pixels[i].green, picture.pixels[i].blue})
            rows.push_back(static_cast<char>(part));
    }
    const std::string head = number(static_cast<std::uint32_t>(picture.width)) +
                             number(static_cast<std::uint32_t>(picture.height)) +
                             "\x08\x02\0\0\0"s; // 8 bits for each of red, green and blue
    return "\x89PNG\r\n\x1A\n" + chunk("IHDR", head) +
           chunk("IDAT", "\x78\x01" + Deflater(rows).run() + number(adler32(rows))) + chunk("IEND", {});
}

} // namespace orvista
