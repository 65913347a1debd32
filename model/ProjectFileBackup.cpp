#include "model/ProjectFileBackup.h"

#include "model/Files.h"

#include <fstream>
#include <system_error>

namespace orvista::DocMgrModule {

namespace fs = std::filesystem;

namespace {

bool isRegularFile(const fs::path& path) {
    std::error_code error;
    return fs::is_regular_file(fs::symlink_status(path, error));
}

bool isThere(const fs::path& path) {
    std::error_code error;
    return fs::exists(fs::symlink_status(path, error));
}

/// Renaming needs no right to the file itself; a write-protected project must stay protected.
bool isWritable(const fs::path& path) {
    return std::fstream(path, std::ios::in | std::ios::out).is_open();
}

} // namespace

ProjectFileBackup::ProjectFileBackup(const std::string& file, const std::string& backup)
    : file_(systemPath(file)), backup_(systemPath(backup)) {
    if (!isRegularFile(file_) || !isWritable(file_) || isThere(backup_))
        return;
    std::error_code error;
    fs::rename(file_, backup_, error);
    made_ = !error;
}

void ProjectFileBackup::restore() {
    if (!made_)
        return;
    std::error_code ignored;
    fs::rename(backup_, file_, ignored);
    made_ = false;
}

void ProjectFileBackup::created() {
    if (!made_)
        return;
    std::error_code error;
    const fs::file_status old = fs::status(backup_, error);
    if (!error)
        fs::permissions(file_, old.permissions(), error);
}

void ProjectFileBackup::discard() {
    if (!isRegularFile(backup_))
        return;
    std::error_code ignored;
    fs::remove(backup_, ignored);
}

} // namespace orvista::DocMgrModule
