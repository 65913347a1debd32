#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace orvista {

/// Units of the character that the text begins with, 1 to 4; 0 where it is empty or begins with anything that
/// is not well-formed UTF-8.
std::size_t utf8CharacterLength(std::string_view text);

/// How much of a text that does not begin with a character one U+FFFD stands for: the units that begin one,
/// at least 1. The text is not empty.
std::size_t utf8FaultLength(std::string_view text);

/// Whether all of the text is well formed; an empty one is.
bool isUtf8(std::string_view text);

/// \param character a code point
void appendUtf8(std::string& text, char32_t character);

} // namespace orvista
