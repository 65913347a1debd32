#pragma once

#include "model/Project.h"

#include <string>

namespace orvista {

/// Writes a project as saving it does, and copies of its folder's bitmaps, into a folder (UTF-8, there
/// already, empty): what is sent from there stays the same whatever happens to the project meanwhile. The
/// files are not waited for until they are on the disk.
/// \param project with its own ProjPath and ProjName
/// \returns the path of the project file there
/// \throws std::system_error
std::string writeSnapshot(const Project& project, const std::string& folder);

} // namespace orvista
