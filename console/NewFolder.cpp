#include "console/NewFolder.h"

#include "console/CommandFailure.h"
#include "console/ReadFiles.h"
#include "console/SaveTarget.h"
#include "model/BitmapFiles.h"
#include "model/PathRules.h"
#include "model/SystemPath.h"

#include <filesystem>
#include <system_error>

namespace orvista::console {

namespace fs = std::filesystem;

std::string folderOfProject(const std::string& path) {
    const auto parts = PathRules::native().split(path);
    return parts ? parts->folder : ".";
}

void expectNoOtherProject(const std::string& project, const std::string& output) {
    if (isSameFile(project, output))
        throw CommandFailure(ExitStatus::Unusable, output + " is the project itself; name another folder");
    if (const std::string other = otherProjectBeside(output); !other.empty())
        throw CommandFailure(ExitStatus::Unusable, folderOfProject(output) + " holds another project, " +
                                                       other + "; name another folder");
}

void makeFolderOf(const std::string& output) {
    const std::string folder = folderOfProject(output);
    std::error_code error;
    fs::create_directories(systemPath(folder), error);
    if (error)
        throw CommandFailure(ExitStatus::Found, folder + ": " + error.message());
}

void copyBitmaps(const std::string& project, const std::string& output) {
    const std::string folder = folderOfProject(project);
    for (const std::string& name : bitmapsOfFolder(folder)) {
        std::error_code error;
        fs::copy_file(systemPath(folder) / systemPath(name),
                      systemPath(folderOfProject(output)) / systemPath(name),
                      fs::copy_options::overwrite_existing, error);
        if (error)
            throw CommandFailure(ExitStatus::Found, name + ": " + error.message());
    }
}

} // namespace orvista::console
