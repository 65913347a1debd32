#pragma once

#include "model/PathRules.h"

#include <string>
#include <vector>

namespace orvista {

/// Files on their way into a folder: they are collected in a folder of their own inside it and appear under
/// their final names only when all are complete. What was not brought over is removed with the object.
class DownloadStaging {
public:
    /// Makes the inner folder. \throws std::system_error
    DownloadStaging(std::string folder, const PathRules& paths);
    ~DownloadStaging();
    DownloadStaging(const DownloadStaging&) = delete;
    DownloadStaging& operator=(const DownloadStaging&) = delete;

    /// Where to write the next file. \param finalPath where it is to appear, replacing what is there
    const std::string& pathFor(const std::string& finalPath);
    /// Brings every file over. \throws std::system_error when one cannot be; those before it have appeared
    void complete();

private:
    struct File {
        std::string stagedPath;
        std::string finalPath;
    };

    const PathRules paths_;
    std::string inner_;
    std::vector<File> files_;
};

} // namespace orvista
