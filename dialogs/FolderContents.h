#pragma once

#include "model/PathRules.h"

#include <string>
#include <vector>

/// What the choosers list. All paths are UTF-8; what cannot be read is silently empty.
namespace orvista {

/// Names of the folders in `folder`, sorted as people read; hidden ones (a leading point) are left out.
std::vector<std::string> subfolders(const std::string& folder);
/// Names of the project files ("*.orx" in any case) in `folder`, sorted.
std::vector<std::string> projectFiles(const std::string& folder);

/// A volume the user can choose from.
struct Drive {
    std::string root;
    std::string label; ///< may be empty
};
/// The drives of the platform: drive letters, or the mounted volumes with the root first.
std::vector<Drive> drives(const PathRules& rules);

/// In native form, without a trailing separator except that of a root.
std::string plainFolder(const PathRules& rules, const std::string& folder);
/// The root of the path, then every folder down to the path itself.
std::vector<std::string> foldersDownTo(const PathRules& rules, const std::string& folder);
/// Where a chooser starts: `folder` when it is one, otherwise the user's home.
std::string startFolder(const PathRules& rules, const std::string& folder);

} // namespace orvista
