#pragma once

#include "model/PathRules.h"

#include <string>
#include <vector>

namespace orvista {

/// Files on their way into a folder: they are collected in a folder of their own inside it and appear under
/// their final names only when all are complete. Either all of them appear, or the folder stays as it was.
/// What was not brought over is removed with the object; what a killed program left is finished or removed by
/// the next one.
class DownloadStaging {
public:
    /// Makes the inner folder. \throws std::system_error
    DownloadStaging(std::string folder, const PathRules& paths);
    ~DownloadStaging();
    DownloadStaging(const DownloadStaging&) = delete;
    DownloadStaging& operator=(const DownloadStaging&) = delete;

    /// False for a name that the disk cannot hold. \param finalPath as for pathFor
    static bool canAppear(const std::string& finalPath);

    /// Where to write the next file. \param finalPath where in the folder it is to appear, replacing what is
    /// there \throws std::system_error when something stands there that a file cannot replace
    std::string pathFor(const std::string& finalPath);
    /// Brings every file over, but for those whose names the disk refuses.
    /// \throws std::system_error when one cannot be; those before it are as they were, then
    void complete();

private:
    const PathRules paths_;
    std::string inner_;
    std::vector<std::string> names_;
};

} // namespace orvista
