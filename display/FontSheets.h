#pragma once

#include <string_view>

namespace orvista {

/// The fonts as they are drawn. A picture begins with a heading: the character's code in hexadecimal (with an
/// "f" behind it: the flatter shape it takes under an accent) or an accent's name, the cell's row the picture
/// starts on, and for the reader the character. '#' is a dot of the character, '.' one of the ground; what
/// lies right of and below a picture is ground.
extern const std::string_view smallFontSheet;
extern const std::string_view largeFontSheet;

} // namespace orvista
