#include "console/ReadFiles.h"

#include "console/CommandFailure.h"
#include "console/GivenProject.h"
#include "items/NotesFile.h"
#include "link/TransferredFiles.h"
#include "model/FolderLookup.h"
#include "model/PathRules.h"
#include "model/SystemPath.h"

#include <filesystem>

namespace orvista::console {

void ReadFiles::add(const std::string& path) {
    paths_.push_back(path);
}

void ReadFiles::addFolder(const std::string& folder) {
    const PathRules paths = PathRules::native();
    for (const std::string_view name : transferredDeviceFiles)
        add(deviceFileOnDisk(paths, paths.join(folder, name)));
    for (const std::string& name : bitmapsOfFolder(folder))
        add(paths.join(folder, name));
}

void ReadFiles::addProject(const std::string& path) {
    add(path);
    add(notesPath(path));
    add(listOfMaster(path));
    addFolder(PathRules::native().split(path).value_or(SplitPath{".", path}).folder);
}

void ReadFiles::expectApart(const std::string& output) const {
    std::error_code error;
    if (output.empty() || !std::filesystem::exists(systemPath(output), error))
        return;
    for (const std::string& path : paths_)
        if (isSameFile(path, output))
            throw CommandFailure(ExitStatus::Unusable,
                                 output + (output == path ? " is" : " is " + path + ", which is") +
                                     " read by this command; name another file to write");
}

void expectApartFromProject(const std::string& output, const std::string& project) {
    ReadFiles files;
    files.addProject(project);
    files.expectApart(output);
}

bool isSameFile(const std::string& path, const std::string& other) {
    std::error_code notThere;
    return std::filesystem::equivalent(systemPath(path), systemPath(other), notThere);
}

} // namespace orvista::console
