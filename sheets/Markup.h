#pragma once

#include <string>
#include <string_view>

namespace orvista {

/// A UTF-8 text between the tags, or in the quotation marks, of HTML or XML.
std::string escapedForMarkup(std::string_view text);

} // namespace orvista
