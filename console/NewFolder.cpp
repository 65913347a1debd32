#include "console/NewFolder.h"

#include "console/CommandFailure.h"
#include "console/ReadFiles.h"
#include "console/SaveTarget.h"
#include "model/BitmapFiles.h"
#include "model/FileReplacing.h"
#include "model/Files.h"
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
    const PathRules paths = PathRules::native();
    const std::string folder = folderOfProject(project);
    for (const std::string& name : bitmapsOfFolder(folder)) {
        try {
            FileSource bitmap(paths.join(folder, name));
            replaceFile(paths.join(folderOfProject(output), name),
                        bytesUpTo(bitmap, std::string().max_size()));
        } catch (const std::system_error& failure) {
            throw CommandFailure(ExitStatus::Found, name + ": " + failure.code().message());
        }
    }
}

} // namespace orvista::console
