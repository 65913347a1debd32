#pragma once

#include <string_view>

namespace orvista::console {

/// "version" of every document in JSON: which release of the program wrote it.
inline constexpr std::string_view programRelease = ORVISTA_RELEASE;

} // namespace orvista::console
