#include "console/Projects.h"

#include "check/FileFindings.h"
#include "console/FirstError.h"
#include "model/ProjectFile.h"
#include "model/Text.h"

#include <CLI/App.hpp>

namespace orvista::console {

namespace {

/// With the project's path, which a system's own description does not have.
std::string aboutProject(const std::string& text, const std::string& path) {
    const auto folder = PathRules::native().split(path);
    const bool namesFile = text.find(folder ? folder->folder : path) != std::string::npos;
    return namesFile ? text : path + ": " + text;
}

} // namespace

void expectProject(const std::string& path) {
    if (!endsWithIgnoringCase(path, DocMgrModule::projectExtension))
        throw CommandFailure(ExitStatus::Unusable, path + " is not a project (.orx)");
}

Project readProject(const std::string& path, FileRemarks* remarks) {
    expectProject(path);
    const PathRules paths = PathRules::native();
    FirstError error;
    Project project;
    const bool isRead = DocMgrModule::readProjectWithoutWriting(path, project, {paths, error}, remarks);
    if (!isRead || error.any())
        throw CommandFailure(ExitStatus::Unusable, aboutProject(error.text(), path));
    return project;
}

Project readWholeProject(const std::string& path, bool goesOn) {
    FileRemarks remarks;
    Project project = readProject(path, &remarks);
    if (!goesOn && isToRefuse(remarks))
        throw NotWholeFailure(path + " is not whole: " + gravestText(remarks));
    return project;
}

void addNotWhole(CLI::App& command, bool& goesOn) {
    command.add_flag("--not-whole", goesOn, "Go on with a project of which something is lost or moved");
}

void saveProject(const std::string& path, const Project& project) {
    expectProjectName(path);
    const PathRules paths = PathRules::native();
    const auto parts = paths.split(path).value_or(SplitPath{".", path});
    FirstError error;
    const auto outcome = DocMgrModule::SaveProject(parts.folder, DocMgrModule::projectNameOfFile(parts.name),
                                                   project, {paths, error});
    if (outcome != DocMgrModule::SaveOutcome::Saved)
        throw CommandFailure(ExitStatus::Found, aboutProject(error.text(), path));
}

void expectProjectName(const std::string& path) {
    if (!endsWithIgnoringCase(path, DocMgrModule::projectExtension))
        throw CommandFailure(ExitStatus::Unusable, path + " does not end in .orx");
    const auto parts = PathRules::native().split(path);
    if ((parts ? parts->name : path).size() == DocMgrModule::projectExtension.size())
        throw CommandFailure(ExitStatus::Unusable, path + " has no name before .orx");
}

std::string withProjectExtension(const std::string& path) {
    const bool hasExtension = endsWithIgnoringCase(path, DocMgrModule::projectExtension);
    return hasExtension ? path : path + std::string(DocMgrModule::projectExtension);
}

std::string writtenProjectName(const std::string& path) {
    const auto parts = PathRules::native().split(path);
    const std::string& name = parts ? parts->name : path;
    const bool hasEnding = name.empty() || name.find('.') != std::string::npos;
    std::string written = hasEnding ? path : withProjectExtension(path);
    expectProjectName(written);
    return written;
}

} // namespace orvista::console
