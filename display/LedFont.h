#pragma once

#include <array>
#include <cstdint>

namespace orvista {

/// The device's two fonts, one cell per character: no kerning, no proportional widths.
enum class LedFont { Small5x7, Large8x15 };

/// A character's picture: one byte a row from the top, the highest bit leftmost.
struct Glyph {
    std::array<std::uint8_t, 15> rows{};
    bool operator==(const Glyph&) const = default;
};

/// Width of a cell in dots, the gap to the next character included: 6 or 8.
int cellWidth(LedFont font);
/// Height of a cell in dots: 7 or 15.
int cellHeight(LedFont font);

/// The picture of a Windows-1252 character. Control codes, blanks and the code points that the encoding
/// leaves undefined are empty.
const Glyph& glyph(LedFont font, unsigned char character);

} // namespace orvista
