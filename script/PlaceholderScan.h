#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

namespace orvista {

/// A page has at most this many live fields; later placeholders vanish from the text.
inline constexpr std::size_t fieldSlotCount = 4;

/// Field widths and columns are signed 16-bit numbers. A "%" whose width or column is beyond that starts no
/// placeholder and stays in the text, where the user sees it.
inline constexpr int widestField = std::numeric_limits<std::int16_t>::max();
inline constexpr std::size_t lastFieldColumn = std::numeric_limits<std::int16_t>::max();

/// A content text with its placeholders made into blanks.
struct PlaceholderScan {
    static constexpr std::int16_t emptySlot = -1;

    /// The text as the display shows it, in device bytes: one byte is one character is one column.
    std::string DisplayText;
    /// Column of each field in DisplayText, counted from 0. The used slots are a prefix.
    std::array<std::int16_t, fieldSlotCount> VarPos{emptySlot, emptySlot, emptySlot, emptySlot};
    /// Placeholders that were removed.
    std::size_t surplus = 0;
    /// How many blanks are reserved for each field, 1 to widestField; 0 for an empty slot.
    std::array<int, fieldSlotCount> places{};

    std::size_t fieldCount() const;
    bool operator==(const PlaceholderScan&) const = default;
};

/// Makes each of the first four placeholders ("%v" reserves one blank, "%3v" three, "%0v" one) a field,
/// removes the later ones, and leaves every other "%" in the text. One pass: a removed or replaced
/// placeholder is never looked at again.
PlaceholderScan scanPlaceholders(std::string_view text);

} // namespace orvista
