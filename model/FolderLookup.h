#pragma once

#include "model/PathRules.h"

#include <string>

/// Device files and project files are found whatever the case of their names, also on file systems that tell
/// cases apart: projects come from both worlds.
namespace orvista {

/// The path to open for the device file `path` names: the lower-case variant of the name where it exists,
/// else an existing variant, else (a new file) the lower-case name. The folder part is taken as it stands.
std::string deviceFileOnDisk(const PathRules& rules, const std::string& path);

/// The path to open for the project file `path` names: the name as it stands where it exists, else its
/// lower-case variant, else any existing variant, else (a new file) the name as it stands. A name without a
/// folder is looked for in the current one.
std::string projectFileOnDisk(const PathRules& rules, const std::string& path);

} // namespace orvista
