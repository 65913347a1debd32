#pragma once

#include <string>

/// Projects that a command makes of others. They stand apart from every other project, above all from the one
/// that they were made of.
namespace orvista::console {

/// "." for a bare name.
std::string folderOfProject(const std::string& path);
/// \throws CommandFailure where the new project is the other one, or its folder holds another
void expectNoOtherProject(const std::string& project, const std::string& output);
/// The folder that a project is to be written into, unless it is there.
/// \throws CommandFailure
void makeFolderOf(const std::string& output);
/// Writes the bitmaps of that project's folder into the folder of the new one.
/// \throws CommandFailure
void copyBitmaps(const std::string& project, const std::string& output);

} // namespace orvista::console
