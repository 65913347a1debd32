#pragma once

#include "model/Bytes.h"
#include "model/DeviceFiles.h"
#include "model/FileContext.h"
#include "model/FileRemarks.h"
#include "model/Project.h"

#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace orvista::DocMgrModule {

/// What stands in a project file from the header of one device file to the next such header.
struct ProjectFileSection {
    const DeviceFile* file = nullptr; ///< null before the first header
    std::size_t header = 0;           ///< the line of the project file at which it begins; 0 without one
    std::string lines; ///< as they go into the device file: trimmed, without empty ones, each with its end
    /// Of the "[CONFIG]" lines that follow; nothing where none sets it.
    std::optional<std::string> SerialPort;
    std::optional<std::string> IP;

    /// Adds a line, trimmed, that stands there in the project file.
    void append(std::string_view line, std::size_t number);
    /// The line of the project file at which one of `lines` stands; both from 1.
    std::size_t lineInFile(std::size_t line) const;

private:
    /// Lines that follow each other in the project file, too.
    struct Run {
        std::size_t first;  ///< its first line among `lines`
        std::size_t inFile; ///< and in the project file
    };
    std::vector<Run> runs_;
    std::size_t count_ = 0;
};

/// What is known of a project file besides its sections.
struct ProjectFileOutline {
    std::size_t lines = 0;
    bool endsInSettings = false; ///< the last header is "[CONFIG]"
};

/// Whether a line, trimmed of blanks, is the header of a section: of a device file's, or "[CONFIG]".
bool isSectionHeader(std::string_view line);

/// Takes a project file apart, in the order in which its sections stand; each header begins another.
/// \param sections gets what was read before a failure, too
/// \param size of the source in bytes where it is known: saves moving large sections while they grow
/// \param remarks gets what the file as a whole is, and the lines that belong to no device file
/// \throws ReadFailure
ProjectFileOutline takeApart(ByteSource& source, std::vector<ProjectFileSection>& sections,
                             std::size_t size = 0, FileRemarks* remarks = nullptr);

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
