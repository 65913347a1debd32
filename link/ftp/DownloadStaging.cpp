#include "link/ftp/DownloadStaging.h"

#include "model/StagedFiles.h"
#include "model/SystemPath.h"

#include <filesystem>
#include <system_error>

namespace orvista {

namespace fs = std::filesystem;

DownloadStaging::DownloadStaging(std::string folder, const PathRules& paths) : paths_(paths) {
    clearStaging(folder);
    // A leftover that cannot be removed, and folders of others, are passed over.
    constexpr int attempts = 1000;
    for (int number = 0; number < attempts; ++number) {
        inner_ = paths_.join(folder, stagingName(number));
        if (fs::create_directory(systemPath(inner_)))
            return;
    }
    throw std::system_error(std::make_error_code(std::errc::file_exists), inner_);
}

DownloadStaging::~DownloadStaging() {
    removeStaging(systemPath(inner_));
}

bool DownloadStaging::canAppear(const std::string& finalPath) {
    return orvista::canAppear(systemPath(finalPath));
}

std::string DownloadStaging::pathFor(const std::string& finalPath) {
    std::error_code unknown;
    if (fs::is_directory(fs::symlink_status(systemPath(finalPath), unknown)))
        throw std::system_error(std::make_error_code(std::errc::is_a_directory), finalPath);
    names_.push_back(paths_.split(finalPath).value().name);
    return paths_.join(inner_, std::to_string(names_.size() - 1));
}

void DownloadStaging::complete() {
    letAppear(systemPath(inner_), names_);
}

} // namespace orvista
