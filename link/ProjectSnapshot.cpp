#include "link/ProjectSnapshot.h"

#include "link/TransferredFiles.h"
#include "model/ProjectFile.h"

#include <filesystem>
#include <system_error>

namespace orvista {

namespace {

/// A writer tells of a failure by a text; which file it was is known without it.
class NoMessages final : public Messages {
public:
    void show(MessageIcon, const std::string&) override {}
    bool askYesNo(const std::string&) override { return false; }
    Answer askYesNoCancel(const std::string&) override { return Answer::Cancel; }
};

} // namespace

std::string writeSnapshot(const Project& project, const std::string& folder) {
    const PathRules paths = PathRules::native();
    std::string projectFile = DocMgrModule::projectFilePath(paths, folder, project.ProjName);
    FileSink sink(projectFile);
    DocMgrModule::writeProjectFile(sink, project);
    sink.close();
    NoMessages messages;
    for (const DeviceFile* file : deviceFiles) {
        const std::string path = paths.join(folder, file->name);
        if (!file->Write(path, project, {paths, messages}))
            throw WriteFailure(std::make_error_code(std::errc::io_error), path);
    }
    for (const std::string& name : bitmapsOfFolder(project.ProjPath))
        std::filesystem::copy_file(systemPath(paths.join(project.ProjPath, name)),
                                   systemPath(paths.join(folder, name)));
    return projectFile;
}

} // namespace orvista
