#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Bytes that tell whether they are whole: a line that names their form, a line with the checksum of what
/// follows (FNV-1a, 64 bits, 16 hexadecimal digits), both ending in LF, and what follows.
namespace orvista {

/// \param firstLine with its LF
std::string checkedTexts(std::string_view firstLine, std::string_view texts);

/// What follows the two lines; nothing where they are others, or something is missing.
std::optional<std::string_view> textsChecked(std::string_view firstLine, std::string_view bytes);

} // namespace orvista
