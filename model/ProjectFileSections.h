#pragma once

#include "model/Files.h"
#include "model/PathRules.h"
#include "model/Project.h"

#include <stdexcept>
#include <string>

namespace orvista::DocMgrModule {

/// A section's device file could not be created or written; `what()` is the message for the user.
class SectionFailure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Reads a project file line by line: the lines of each device-file section go, trimmed and without empty
/// ones, into that device file of `folder` (UTF-8); the lines of "[CONFIG]" set the system settings.
/// A section that is missing leaves its device file as it was; a second one of the same name starts it anew.
/// \throws ReadFailure, SectionFailure
void splitIntoDeviceFiles(ByteSource& source, const std::string& folder, const PathRules& paths,
                          Project& project);

} // namespace orvista::DocMgrModule
