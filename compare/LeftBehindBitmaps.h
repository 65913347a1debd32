#pragma once

#include "model/Project.h"

#include <string>
#include <vector>

/// Bitmaps that stay behind where a project, or a part of one, goes to another folder.
namespace orvista {

/// The bitmaps that the project's messages name and only the other folder has, by the names of its files, in
/// their order. Folders are UTF-8.
std::vector<std::string> leftBehindBitmaps(const Project& project, const std::string& otherFolder);

/// Copies files of that folder into another one, and never replaces a file. Returns the names of those that
/// could not be copied.
std::vector<std::string> copyMissingFiles(const std::vector<std::string>& names, const std::string& from,
                                          const std::string& to);

} // namespace orvista
