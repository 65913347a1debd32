#include "model/Windows1252.h"

#include "model/Utf8.h"

#include <algorithm>
#include <array>

namespace orvista {

namespace {

/// Code points of the bytes 0x80 to 0x9F; every other byte is its own code point.
constexpr std::array<char32_t, 32> upperControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr unsigned char firstUpperControl = 0x80;

/// Takes one character of at most three UTF-8 units off the front; every character of the encoding is that
/// short. Overlong forms decode to a value below their length's first and are refused.
std::optional<char32_t> takeCodePoint(std::string_view& utf8) {
    const auto unit = [&utf8](std::size_t at) { return static_cast<unsigned char>(utf8[at]); };
    const auto isTrail = [&](std::size_t at) { return at < utf8.size() && (unit(at) & 0xC0) == 0x80; };
    const unsigned char lead = unit(0);
    char32_t codePoint = lead;
    std::size_t length = 1;
    if ((lead & 0xE0) == 0xC0 && isTrail(1)) {
        codePoint = (lead & 0x1FU) << 6 | (unit(1) & 0x3FU);
        length = 2;
    } else if ((lead & 0xF0) == 0xE0 && isTrail(1) && isTrail(2)) {
        codePoint = (lead & 0x0FU) << 12 | (unit(1) & 0x3FU) << 6 | (unit(2) & 0x3FU);
        length = 3;
    } else if (lead >= 0x80) {
        return std::nullopt;
    }
    constexpr std::array<char32_t, 4> firstOfLength = {0, 0, 0x80, 0x800};
    if (codePoint < firstOfLength[length])
        return std::nullopt;
    utf8.remove_prefix(length);
    return codePoint;
}

/// Moves the ASCII that the text begins with, which is the same in either encoding.
void moveAscii(std::string_view& from, std::string& to) {
    const auto end =
        std::ranges::find_if(from, [](char unit) { return static_cast<unsigned char>(unit) >= 0x80; });
    const auto size = static_cast<std::size_t>(end - from.begin());
    to.append(from.substr(0, size));
    from.remove_prefix(size);
}

} // namespace

unsigned char lowerWindows1252(unsigned char byte) {
    const bool isAscii = byte >= 'A' && byte <= 'Z';
    const bool isAccented =
        byte >= 0xC0 && byte <= 0xDE && byte != 0xD7; // between them, the multiplication sign
    if (isAscii || isAccented)
        return static_cast<unsigned char>(byte + 0x20);
    if (byte == 0x8A || byte == 0x8C || byte == 0x8E) // S and Z with caron, and OE
        return static_cast<unsigned char>(byte + 0x10);
    return byte == 0x9F ? 0xFF : byte; // Y with diaeresis
}

char32_t windows1252CodePoint(unsigned char byte) {
    const bool mapped = byte >= firstUpperControl && byte < firstUpperControl + upperControls.size();
    return mapped ? upperControls[byte - firstUpperControl] : byte;
}

std::optional<unsigned char> windows1252Byte(char32_t codePoint) {
    const auto found = std::find(upperControls.begin(), upperControls.end(), codePoint);
    if (found != upperControls.end())
        return static_cast<unsigned char>(firstUpperControl + (found - upperControls.begin()));
    const bool isOwnCode = codePoint < firstUpperControl || (codePoint >= 0xA0 && codePoint <= 0xFF);
    return isOwnCode ? std::optional(static_cast<unsigned char>(codePoint)) : std::nullopt;
}

std::string utf8FromWindows1252(std::string_view bytes) {
    std::string utf8;
    utf8.reserve(bytes.size());
    for (moveAscii(bytes, utf8); !bytes.empty(); moveAscii(bytes, utf8)) {
        appendUtf8(utf8, windows1252CodePoint(static_cast<unsigned char>(bytes.front())));
        bytes.remove_prefix(1);
    }
    return utf8;
}

std::optional<std::string> windows1252FromUtf8(std::string_view utf8) {
    std::string bytes;
    bytes.reserve(utf8.size());
    for (moveAscii(utf8, bytes); !utf8.empty(); moveAscii(utf8, bytes)) {
        const auto codePoint = takeCodePoint(utf8);
        const auto byte = codePoint ? windows1252Byte(*codePoint) : std::nullopt;
        if (!byte)
            return std::nullopt;
        bytes.push_back(static_cast<char>(*byte));
    }
    return bytes;
}

std::string_view foreignCharacter(std::string_view utf8) {
    while (!utf8.empty()) {
        const std::string_view character =
            utf8.substr(0, std::max<std::size_t>(utf8CharacterLength(utf8), 1));
        if (!windows1252FromUtf8(character))
            return character;
        utf8.remove_prefix(character.size());
    }
    return {};
}

} // namespace orvista
