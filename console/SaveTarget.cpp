#include "console/SaveTarget.h"

#include "console/NotesBeside.h"
#include "console/Output.h"
#include "console/Projects.h"
#include "model/PathRules.h"
#include "model/ProjectFile.h"
#include "model/SystemPath.h"
#include "model/Text.h"

#include <filesystem>

namespace orvista::console {

namespace fs = std::filesystem;

SaveTarget::SaveTarget(const std::string& project, const std::string& output, ReadFiles others)
    : project_(project), path_(project) {
    if (output.empty())
        return;
    std::string written = writtenProjectName(output);
    if (isSameFile(project, written))
        return;
    others.addProject(project);
    others.expectApart(written);
    path_ = std::move(written);
    isAnother_ = true;
}

void SaveTarget::save(const Project& project) const {
    const std::string other = isAnother_ ? otherProjectBeside(path_) : std::string();
    saveProject(path_, project);
    if (isAnother_)
        copyNotesBeside(project_, path_);
    if (!other.empty())
        printLine("The device files of " + other + " in the same folder were replaced");
}

std::string otherProjectBeside(const std::string& path) {
    const std::string folder = PathRules::native().split(path).value_or(SplitPath{".", path}).folder;
    std::error_code error;
    for (const fs::directory_entry& file : fs::directory_iterator(systemPath(folder), error)) {
        const std::string name = utf8Path(file.path().filename());
        if (endsWithIgnoringCase(name, DocMgrModule::projectExtension) &&
            file.path().filename() != systemPath(path).filename())
            return name;
    }
    return {};
}

} // namespace orvista::console
