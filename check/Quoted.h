#pragma once

#include <string>
#include <string_view>

namespace orvista {

/// Device bytes (Windows-1252) as a sentence shows them: UTF-8 in double quotes, at most 40 characters, with
/// a "?" for what cannot be printed.
std::string quoted(std::string_view bytes);

} // namespace orvista
