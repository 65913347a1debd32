#include "console/ProjectDelivery.h"

#include "items/NotesFile.h"
#include "link/TransferredFiles.h"
#include "link/ftp/DownloadStaging.h"
#include "model/FileCopy.h"
#include "model/FolderLookup.h"
#include "model/StagedFiles.h"
#include "model/SystemPath.h"
#include "model/Text.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace orvista::console {

namespace {

namespace fs = std::filesystem;

/// A folder that is made where it is missing, and goes again unless it is kept.
class TargetFolder {
public:
    /// \throws std::system_error
    TargetFolder(const std::string& path, DeliveryFolder wanted) {
        for (fs::path folder = systemPath(path); !folder.empty() && !fs::exists(folder);
             folder = folder.parent_path())
            made_.push_back(folder);
        if (wanted == DeliveryFolder::NewOne && made_.empty())
            throw std::system_error(std::make_error_code(std::errc::file_exists), path);
        fs::create_directories(systemPath(path));
    }
    ~TargetFolder() {
        std::error_code notEmpty;
        for (const fs::path& folder : made_)
            fs::remove(folder, notEmpty);
    }
    TargetFolder(const TargetFolder&) = delete;
    TargetFolder& operator=(const TargetFolder&) = delete;

private:
    std::vector<fs::path> made_; ///< innermost first
};

/// Into the folders beside a new one nothing is brought any more, which would clear them.
void clearFoldersBeside(const std::string& folder) {
    std::error_code unreadable;
    const fs::directory_iterator beside(systemPath(folder).parent_path(), unreadable);
    for (const fs::directory_entry& entry : beside)
        if (entry.is_directory(unreadable) && !entry.is_symlink(unreadable))
            clearStaging(utf8Path(entry.path()));
}

/// Where the disk knows names in any case, one of them may have come under another.
bool isAmongBrought(const std::string& name, const std::vector<std::string>& brought,
                    const std::string& folder) {
    const auto inFolder = [&folder](const std::string& file) {
        return systemPath(PathRules::native().join(folder, file));
    };
    return std::ranges::any_of(brought, [&](const std::string& other) {
        std::error_code unknown;
        return name == other ||
               (equalsIgnoringCase(name, other) && fs::equivalent(inFolder(name), inFolder(other), unknown));
    });
}

} // namespace

std::vector<std::string> deliverProject(const std::string& from, const std::string& to,
                                        DeliveryFolder wanted) {
    const PathRules paths = PathRules::native();
    const SplitPath source = paths.split(from).value();
    const SplitPath target = paths.split(to).value_or(SplitPath{".", to});
    const std::vector<std::string> bitmaps = bitmapsOfFolder(source.folder);
    const TargetFolder folder(target.folder, wanted);
    if (wanted == DeliveryFolder::NewOne)
        clearFoldersBeside(target.folder);
    DownloadStaging staging(target.folder, paths);
    const auto bring = [&](const std::string& name, const std::string& finalPath) {
        copyFile(paths.join(source.folder, name), staging.pathFor(finalPath));
    };
    bring(source.name, projectFileOnDisk(paths, paths.join(target.folder, target.name)));
    for (const std::string_view name : transferredDeviceFiles)
        bring(std::string(name), deviceFileOnDisk(paths, paths.join(target.folder, name)));
    for (const std::string& name : bitmaps)
        bring(name, paths.join(target.folder, name));
    if (const auto notes = paths.split(notesPath(from)); fs::exists(systemPath(notesPath(from))))
        bring(notes.value().name, notesPath(to));
    staging.complete();
    std::vector<std::string> kept = bitmapsOfFolder(target.folder);
    std::erase_if(kept,
                  [&](const std::string& name) { return isAmongBrought(name, bitmaps, target.folder); });
    return kept;
}

} // namespace orvista::console
