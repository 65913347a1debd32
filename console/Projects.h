#pragma once

#include "model/Project.h"

#include <string>

namespace orvista::console {

/// Reads a project as opening it does, without writing anything.
/// \throws CommandFailure
Project readProject(const std::string& path);

/// Writes a project and its device files as saving it does.
/// \param path of the project file
/// \throws CommandFailure
void saveProject(const std::string& path, const Project& project);

/// \throws CommandFailure unless the path ends in a name and ".orx"
void expectProjectName(const std::string& path);

/// The path with ".orx", which may be left out.
std::string withProjectExtension(const std::string& path);
/// The same for a project that is written under another name: one with another ending is refused, which is
/// more likely a slip.
/// \throws CommandFailure
std::string writtenProjectName(const std::string& path);

} // namespace orvista::console
