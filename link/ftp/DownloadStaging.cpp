#include "link/ftp/DownloadStaging.h"

#include "model/Files.h"

#include <filesystem>
#include <system_error>
#include <utility>

namespace orvista {

namespace fs = std::filesystem;

DownloadStaging::DownloadStaging(std::string folder, const PathRules& paths) : paths_(paths) {
    // A program that was killed may have left such folders behind; they are never reused.
    constexpr int attempts = 1000;
    for (int number = 0; number < attempts; ++number) {
        inner_ = paths_.join(folder, "download" + std::to_string(number) + ".tmp");
        if (fs::create_directory(systemPath(inner_)))
            return;
    }
    throw std::system_error(std::make_error_code(std::errc::file_exists), inner_);
}

DownloadStaging::~DownloadStaging() {
    std::error_code ignored;
    fs::remove_all(systemPath(inner_), ignored);
}

const std::string& DownloadStaging::pathFor(const std::string& finalPath) {
    files_.push_back({paths_.join(inner_, std::to_string(files_.size())), finalPath});
    return files_.back().stagedPath;
}

void DownloadStaging::complete() {
    for (const File& file : files_)
        fs::rename(systemPath(file.stagedPath), systemPath(file.finalPath));
}

} // namespace orvista
