#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// The places of a master project: parts of its texts that each display has its own values for. In a quoted
/// text a place is "{name:width}", "{name:width>}" or "{name:width^}", in an ON or OFF text "{name}", too,
/// and
/// "{name}.bmp" is a bitmap's whole name. "{{" stands for "{". What is no place as a whole is text.
///
/// Only masters have places: in the scripts of all other projects braces are ordinary characters.
namespace orvista {

inline constexpr std::size_t widestPlace = 32;

enum class PlaceAlignment { Left, Centre, Right };

/// A part of a text that gives way to something else. Positions are bytes.
struct TextPlace {
    enum class Kind {
        Value,  ///< a value with blanks around it
        Bitmap, ///< the whole name of a bitmap, its ending not counted
        Brace   ///< "{{", no place, but an escape
    };
    Kind kind = Kind::Value;
    std::size_t at = 0;     ///< of the text, from 0
    std::size_t length = 0; ///< as it is written
    std::string name;       ///< in small letters; empty for a brace
    std::size_t width = 0;  ///< 1 to widestPlace; 0: as wide as its value
    PlaceAlignment alignment = PlaceAlignment::Left;
    /// In a script, from 1; 0 in other texts.
    std::size_t line = 0;
    std::size_t column = 0;
};

/// An ASCII letter, then letters, digits and "_".
bool isPlaceName(std::string_view text);

/// Whether a bitmap's name is a place: "{name}.bmp".
bool isPlaceOfBitmap(std::string_view name);

/// Those of a script, in its order: in the texts and bitmap names of lines that the display takes.
std::vector<TextPlace> placesInScript(std::string_view script);
/// Those of a Boolean variable's ON or OFF text.
std::vector<TextPlace> placesInSwitchText(std::string_view text);
/// Where the display shows a character of a quoted text, whose places are as wide as they say. From 0.
/// \param at of no place; may be the text's end
std::size_t shownColumn(std::string_view text, std::size_t at);

/// The text with blanks up to the width; a longer one is cut. \param width 0 for the text as it is
std::string placed(std::string_view text, std::size_t width, PlaceAlignment alignment);

} // namespace orvista
