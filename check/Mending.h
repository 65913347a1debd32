#pragma once

#include "model/PathRules.h"
#include "model/Project.h"

#include <string>
#include <vector>

namespace orvista {

/// A project file that was put together again.
struct Mended {
    Project project; ///< ProjPath and ProjName as in a new one
    /// What was taken from where: "[STDMSG.ILM]" and the device file's path.
    struct Taken {
        std::string section;
        std::string path;
    };
    std::vector<Taken> taken;
    bool isDisplaySure = true; ///< false where the IP, which no device file holds, may be lost or cut off
    std::vector<std::string>
        faults; ///< sentences: what can be mended by nothing; then the project is not whole
};

/// Reads a project file, and in place of each section that is not whole the device file of a folder, where
/// that one is whole: it has every row, and nothing of it is lost or moved.
/// \param path of the project file, UTF-8
/// \param folder of the device files, UTF-8
/// \throws OpenFailure, ReadFailure of the project file
Mended mendedProject(const std::string& path, const std::string& folder, const PathRules& paths);

} // namespace orvista
