#pragma once

#include <string>
#include <string_view>

namespace orvista {

/// A UTF-8 text between the tags, or in the quotation marks, of HTML or XML; with "?" for a
/// control character that they have not.
std::string escapedForMarkup(std::string_view text);

} // namespace orvista
