#pragma once

#include <string>

namespace orvista {

/// Copies the files of a folder, but not the folders in it, into a new folder of the same name:
/// "pumpstation", or "pumpstation 2", "pumpstation 3" where that is taken. What is there already stays as it
/// is.
/// \param source, parent UTF-8
/// \returns the new folder
/// \throws std::system_error, and then nothing of the new folder is left
std::string copyToNewFolder(const std::string& source, const std::string& parent);

/// Copies the files of a folder into one that is there already.
/// \throws std::system_error
void copyFiles(const std::string& source, const std::string& target);

} // namespace orvista
