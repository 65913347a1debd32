#include "link/ProjectSnapshot.h"

#include "link/TransferredFiles.h"
#include "model/FileCopy.h"
#include "model/Files.h"
#include "model/NoMessages.h"
#include "model/ProjectFile.h"
#include "model/SystemPath.h"

#include <filesystem>
#include <system_error>

namespace orvista {

namespace {

/// Another name for the file, or a copy where the disk has no such names.
void nameAgain(const std::string& file, const std::string& path) {
    std::error_code error;
    std::filesystem::create_hard_link(systemPath(file), systemPath(path), error);
    if (error)
        copyFile(file, path);
}

} // namespace

std::string writeSnapshot(const Project& project, const std::string& folder) {
    const PathRules paths = PathRules::native();
    std::string projectFile = DocMgrModule::projectFilePath(paths, folder, project.ProjName);
    FileSink sink(projectFile);
    DocMgrModule::writeProjectFile(sink, project);
    sink.close();
    NoMessages messages; // which file it was is known without them
    for (const DeviceFile* file : deviceFiles) {
        const std::string path = paths.join(folder, file->name);
        if (!file->Write(path, project, {paths, messages}))
            throw WriteFailure(std::make_error_code(std::errc::io_error), path);
    }
    for (const std::string& name : bitmapsOfFolder(project.ProjPath))
        copyFile(paths.join(project.ProjPath, name), paths.join(folder, name));
    return projectFile;
}

std::string SimilarSnapshots::write(const Project& project, const std::string& folder) {
    const PathRules paths = PathRules::native();
    const bool isFirst = first_.empty();
    for (const DeviceFile* const file : deviceFiles) {
        const std::string name(file->name);
        MemorySink bytes;
        file->write(bytes, project);
        if (!isFirst && files_[name] == bytes.bytes()) {
            nameAgain(paths.join(first_, name), paths.join(folder, name));
            continue;
        }
        FileSink sink(paths.join(folder, name));
        sink.write(bytes.bytes());
        sink.close();
        if (isFirst)
            files_[name] = bytes.bytes();
    }
    if (isFirst)
        bitmaps_ = bitmapsOfFolder(project.ProjPath);
    for (const std::string& name : bitmaps_) {
        if (isFirst)
            copyFile(paths.join(project.ProjPath, name), paths.join(folder, name));
        else
            nameAgain(paths.join(first_, name), paths.join(folder, name));
    }
    if (isFirst)
        first_ = folder;
    return DocMgrModule::projectFilePath(paths, folder, project.ProjName);
}

} // namespace orvista
