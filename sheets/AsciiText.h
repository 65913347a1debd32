#pragma once

#include <string>
#include <string_view>

/// Texts for programs that read less than UTF-8.
namespace orvista {

/// A UTF-8 text without accents, "ss" for a sharp s, and "?" for every other character beyond ASCII or that
/// is a control character.
std::string asciiText(std::string_view utf8);

/// A UTF-8 text on one line: "?" for control characters, and for what is no UTF-8 or no character.
std::string withoutControls(std::string_view utf8);

} // namespace orvista
