#pragma once

#include <string>
#include <string_view>

namespace orvista {

/// Bytes in the letters of RFC 4648, on one line.
std::string base64(std::string_view bytes);

} // namespace orvista
