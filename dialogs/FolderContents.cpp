#include "dialogs/FolderContents.h"

#include "model/ProjectFile.h"
#include "model/SystemPath.h"
#include "model/Text.h"
#include "widgets/PathText.h"

#include <QCollator>
#include <QDir>
#include <QStorageInfo>

#include <algorithm>
#include <filesystem>

namespace orvista {

namespace {

namespace fs = std::filesystem;

template <typename Accept>
std::vector<std::string> namesIn(const std::string& folder, Accept accept) {
    std::vector<std::string> names;
    std::error_code error;
    fs::directory_iterator entry(systemPath(folder), fs::directory_options::skip_permission_denied, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error))
        if (std::string name = utf8Path(entry->path().filename()); !name.empty() && accept(*entry))
            names.push_back(std::move(name));

    QCollator order(QLocale::English); // the same order in every locale
    order.setNumericMode(true);        // "Line 9" before "Line 10"
    order.setCaseSensitivity(Qt::CaseInsensitive);
    std::sort(names.begin(), names.end(), [&](const std::string& left, const std::string& right) {
        const int compared = order.compare(shownPath(left), shownPath(right));
        return compared != 0 ? compared < 0 : left < right;
    });
    return names;
}

std::string rootOf(const PathRules& rules, const QString& root) {
    return rules.nativeForm(pathFromShown(root));
}

#ifndef _WIN32
/// Some volumes hold nobody's projects: memory, packages, layers of containers.
bool isRealVolume(const QStorageInfo& volume) {
    static const QList<QByteArray> virtualSystems = {"tmpfs",    "devtmpfs", "ramfs",  "overlay",
                                                     "squashfs", "efivarfs", "devpts", "fuse.portal"};
    return volume.isValid() && volume.isReady() && QFileInfo(volume.rootPath()).isDir() &&
           !virtualSystems.contains(volume.fileSystemType());
}
#endif

} // namespace

std::vector<std::string> subfolders(const std::string& folder) {
    return namesIn(folder, [](const fs::directory_entry& entry) {
        std::error_code ignored;
        return !utf8Path(entry.path().filename()).starts_with('.') && entry.is_directory(ignored);
    });
}

std::vector<std::string> projectFiles(const std::string& folder) {
    return namesIn(folder, [](const fs::directory_entry& entry) {
        std::error_code ignored;
        return endsWithIgnoringCase(utf8Path(entry.path().filename()), DocMgrModule::projectExtension) &&
               entry.is_regular_file(ignored);
    });
}

#ifdef _WIN32
std::vector<Drive> drives(const PathRules& rules) {
    std::vector<Drive> found;
    // Also drives without a medium: they show no folders.
    for (const QFileInfo& root : QDir::drives()) {
        const QString path = root.absoluteFilePath();
        found.push_back({rootOf(rules, path), QStorageInfo(path).name().toStdString()});
    }
    return found;
}
#else
std::vector<Drive> drives(const PathRules& rules) {
    std::vector<Drive> found = {{"/", QStorageInfo::root().name().toStdString()}};
    for (const QStorageInfo& volume : QStorageInfo::mountedVolumes())
        if (isRealVolume(volume) && !volume.isRoot())
            found.push_back({rootOf(rules, volume.rootPath()), volume.name().toStdString()});
    return found;
}
#endif

std::string plainFolder(const PathRules& rules, const std::string& folder) {
    std::string plain = rules.nativeForm(folder);
    const std::size_t rootLength = utf8Path(systemPath(plain).root_path()).size();
    while (plain.size() > std::max<std::size_t>(rootLength, 1) && plain.back() == rules.separator)
        plain.pop_back();
    return plain;
}

std::vector<std::string> foldersDownTo(const PathRules& rules, const std::string& folder) {
    std::vector<std::string> folders;
    fs::path at = systemPath(plainFolder(rules, folder));
    while (!at.empty()) {
        folders.push_back(utf8Path(at));
        if (at.parent_path() == at)
            break;
        at = at.parent_path();
    }
    std::reverse(folders.begin(), folders.end());
    return folders;
}

std::string startFolder(const PathRules& rules, const std::string& folder) {
    std::error_code error;
    if (fs::is_directory(systemPath(folder), error)) {
        const fs::path absolute = fs::absolute(systemPath(folder), error).lexically_normal();
        if (!error)
            return plainFolder(rules, utf8Path(absolute));
    }
    return plainFolder(rules, pathFromShown(QDir::homePath()));
}

} // namespace orvista
