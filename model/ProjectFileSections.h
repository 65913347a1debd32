#pragma once

#include "model/DeviceFiles.h"
#include "model/FileContext.h"
#include "model/Files.h"
#include "model/Project.h"

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace orvista::DocMgrModule {

/// What stands in a project file from the header of one device file to the next such header.
struct ProjectFileSection {
    const DeviceFile* file = nullptr; ///< null before the first header
    std::string lines; ///< as they go into the device file: trimmed, without empty ones, each with its end
    /// Of the "[CONFIG]" lines that follow; nothing where none sets it.
    std::optional<std::string> SerialPort;
    std::optional<std::string> IP;
};

/// Whether a line, trimmed of blanks, is the header of a section: of a device file's, or "[CONFIG]".
bool isSectionHeader(std::string_view line);

/// Takes a project file apart, in the order in which its sections stand; one of the same name counts anew.
/// \param sections gets what was read before a failure, too
/// \param size of the source in bytes where it is known: saves moving large sections while they grow
/// \throws ReadFailure
void takeApart(ByteSource& source, std::vector<ProjectFileSection>& sections, std::size_t size = 0);

/// Sets the system settings that the section holds.
void takeSettings(const ProjectFileSection& section, Project& project);

/// The last section of that device file: an earlier one is overwritten by it. Null when there is none.
const ProjectFileSection* lastSectionOf(const DeviceFile& file,
                                        const std::vector<ProjectFileSection>& sections);

/// A section's device file could not be created or written; `what()` is the message for the user.
class SectionFailure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Writes each section into its device file in `folder` (UTF-8) and sets the system settings, in the order
/// of the project file. A section that is missing leaves its device file as it was.
/// \throws SectionFailure
void writeDeviceFiles(const std::vector<ProjectFileSection>& sections, const std::string& folder,
                      const FileContext& context, Project& project);

} // namespace orvista::DocMgrModule
