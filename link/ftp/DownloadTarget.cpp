#include "link/ftp/DownloadTarget.h"

#include "model/BitmapName.h"
#include "model/Files.h"
#include "model/FolderLookup.h"
#include "model/SystemPath.h"

#include <filesystem>
#include <system_error>

namespace orvista {

bool FolderTarget::canHold(const std::string& name) const {
    return DownloadStaging::canAppear(paths_.join(folder_, name));
}

void FolderTarget::expect(const std::vector<std::string>& names) {
    std::vector<std::string> finalPaths;
    finalPaths.reserve(names.size());
    for (const std::string& name : names) {
        std::string path = paths_.join(folder_, name);
        finalPaths.push_back(isBitmapName(name) ? std::move(path) : deviceFileOnDisk(paths_, path));
    }
    staging_.emplace(folder_, paths_);
    for (const std::string& path : finalPaths)
        stagedPaths_.push_back(staging_->pathFor(path));
}

std::unique_ptr<ByteSink> FolderTarget::next() {
    return std::make_unique<FileSink>(stagedPaths_[next_++]);
}

void FolderTarget::complete() {
    staging_->complete();
}

FetchedTarget::FetchedTarget(FetchedFiles& files) : files_(files) {
    std::error_code unknown;
    place_ = std::filesystem::temp_directory_path(unknown);
}

bool FetchedTarget::canHold(const std::string& name) const {
    return DownloadStaging::canAppear(utf8Path(place_ / systemPath(name)));
}

} // namespace orvista
