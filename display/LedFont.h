#pragma once

#include "script/Styles.h"

#include <array>
#include <cstdint>

namespace orvista {

/// A character's picture: one byte a row from the top, the highest bit leftmost.
struct Glyph {
    std::array<std::uint8_t, 15> rows{};
    bool operator==(const Glyph&) const = default;
};

/// Width of a cell in dots, the gap to the next character included: 6 or 8.
inline int cellWidth(LedFont font) {
    return styleOf(font).cellWidth;
}
/// Height of a cell in dots: 7 or 15.
inline int cellHeight(LedFont font) {
    return styleOf(font).cellHeight;
}

/// The picture of a Windows-1252 character. Control codes, blanks and the code points that the encoding
/// leaves undefined are empty.
const Glyph& glyph(LedFont font, unsigned char character);

} // namespace orvista
