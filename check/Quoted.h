#pragma once

#include <string>
#include <string_view>

namespace orvista {

/// Device bytes (Windows-1252) as a line shows them: UTF-8 with a "?" for what cannot be printed.
std::string printable(std::string_view bytes);

/// Device bytes (Windows-1252) as a sentence shows them: printable, in double quotes, at most 40
/// characters.
std::string quoted(std::string_view bytes);

} // namespace orvista
