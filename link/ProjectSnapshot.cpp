#include "link/ProjectSnapshot.h"

#include "link/TransferredFiles.h"
#include "model/Files.h"
#include "model/NoMessages.h"
#include "model/ProjectFile.h"
#include "model/SystemPath.h"

#include <filesystem>
#include <system_error>

namespace orvista {

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
        std::filesystem::copy_file(systemPath(paths.join(project.ProjPath, name)),
                                   systemPath(paths.join(folder, name)));
    return projectFile;
}

} // namespace orvista
