#pragma once

#include <cstdint>

/// The colours, fonts and effects of the message language.
namespace orvista {

/// One dot of the panel: a red and a green diode behind the same lens; both together look orange. The values
/// are the diodes as bits.
enum class Led : std::uint8_t { Off = 0, Red = 1, Green = 2, Orange = 3 };

/// The device's two fonts, one cell per character: no kerning, no proportional widths.
enum class LedFont : std::uint8_t { Small5x7, Large8x15 };

/// How a page enters or leaves.
enum class Effect : std::uint8_t { Left, Right, Up, Down, Fade };

} // namespace orvista
