#pragma once

#include "console/ReadFiles.h"
#include "model/Project.h"

#include <string>

namespace orvista::console {

/// Where a command saves the project that it was given and has changed.
class SaveTarget {
public:
    /// \param project path of the project
    /// \param output another one, as the user names it; empty, or the same file on the disk, for the project
    ///               itself
    /// \param others what else the command reads
    /// \throws CommandFailure for a name that is none, or that of a file that is read
    SaveTarget(const std::string& project, const std::string& output, ReadFiles others);

    bool isAnother() const { return isAnother_; }
    /// Brings the project's notes along, and says so where that replaces the device files of another project
    /// in the folder. \throws CommandFailure
    void save(const Project& project) const;

private:
    std::string project_;
    std::string path_;
    bool isAnother_ = false;
};

/// Name of a project file beside the one of that path, or of the place for it; empty where there is none.
std::string otherProjectBeside(const std::string& path);

} // namespace orvista::console
