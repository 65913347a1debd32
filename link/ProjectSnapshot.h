#pragma once

#include "model/Project.h"

#include <map>
#include <string>
#include <vector>

namespace orvista {

/// Writes a project as saving it does, and copies of its folder's bitmaps, into a folder (UTF-8, there
/// already, empty): what is sent from there stays the same whatever happens to the project meanwhile. The
/// files are not waited for until they are on the disk.
/// \param project with its own ProjPath and ProjName
/// \returns the path of the project file there
/// \throws std::system_error
std::string writeSnapshot(const Project& project, const std::string& folder);

/// Snapshots of projects that differ in a few texts, all with the same folder of bitmaps: each has the files
/// that are sent, and what is the same as in the first is that file under another name.
class SimilarSnapshots {
public:
    /// As writeSnapshot(), but the project file is not there. \param folder beside the first one
    std::string write(const Project& project, const std::string& folder);

private:
    std::string first_;                        ///< folder; empty for none yet
    std::map<std::string, std::string> files_; ///< the device files there, by name
    std::vector<std::string> bitmaps_;
};

} // namespace orvista
