#include "model/FolderCopy.h"

#include "model/FileCopy.h"
#include "model/Numbers.h"
#include "model/SystemPath.h"

#include <filesystem>
#include <system_error>

namespace orvista {

namespace {

namespace fs = std::filesystem;

constexpr int mostOfOneName = 1000;

fs::path makeNewFolder(const fs::path& wanted) {
    fs::path folder = wanted;
    for (int number = 2; fs::exists(fs::symlink_status(folder)) || !fs::create_directory(folder); ++number) {
        if (number > mostOfOneName)
            throw fs::filesystem_error("no new folder", wanted, std::make_error_code(std::errc::file_exists));
        folder = wanted;
        folder += " " + decimalText(number);
    }
    return folder;
}

} // namespace

void copyFiles(const std::string& source, const std::string& target) {
    for (const fs::directory_entry& entry : fs::directory_iterator(systemPath(source))) {
        if (!entry.is_regular_file())
            continue;
        const fs::path copy = systemPath(target) / entry.path().filename();
        copyFile(utf8Path(entry.path()), utf8Path(copy));
        // What is copied may be for reading only.
        fs::permissions(copy, fs::perms::owner_write, fs::perm_options::add);
    }
}

std::string copyToNewFolder(const std::string& source, const std::string& parent) {
    const fs::path from = systemPath(source);
    const fs::directory_iterator isThere(from); // before anything is made
    const fs::path folder = makeNewFolder(systemPath(parent) / from.filename());
    try {
        copyFiles(source, utf8Path(folder));
    } catch (const std::system_error&) {
        std::error_code ignored;
        fs::remove_all(folder, ignored);
        throw;
    }
    return utf8Path(folder);
}

} // namespace orvista
