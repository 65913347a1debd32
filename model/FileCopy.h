#pragma once

#include <string>

namespace orvista {

/// Copies a regular file, or the one that a link leads to, with its permissions.
/// \param source, target UTF-8; at `target` there must be nothing
/// \throws std::filesystem::filesystem_error with both names and the system's own reason, and then nothing of
///         the copy is left
void copyFile(const std::string& source, const std::string& target);

} // namespace orvista
