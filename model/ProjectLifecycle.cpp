#include "model/ProjectLifecycle.h"

#include "model/NoMessages.h"
#include "model/Text.h"

#include <utility>

namespace orvista::DocMgrModule {

ProjectLifecycle::ProjectLifecycle(Project& project, ConfigModule::History& history,
                                   const ProgramEnvironment& environment, Messages& messages,
                                   ProjectChooser& chooser, ProjectWindow& window)
    : project_(project),
      history_(history),
      environment_(environment),
      messages_(messages),
      chooser_(chooser),
      window_(window) {}

void ProjectLifecycle::InitProject() {
    project_.ResetAddressMap();
    project_.ResetVariables();
    project_.ClearMessages();
    project_.modified = false;
    project_.resetSystemSettings();
    fileRemarks_ = {};
    window_.RefreshViews();
    // Rewriting the address box on the way has marked the project, as an edit would.
    project_.modified = false;
    project_.ProjPath = environment_.programFolder;
    project_.ProjName.clear();
    window_.follow(ProjectTransition::Reset);
    RefreshCaption();
}

void ProjectLifecycle::SetModified(bool modified) {
    project_.modified = modified;
    RefreshCaption();
    if (!modified)
        history_.WriteHistory(project_.ProjPath, project_.ProjName);
    window_.follow(modified ? ProjectTransition::Modified : ProjectTransition::Saved);
}

void ProjectLifecycle::RefreshCaption() {
    std::string caption = programTitle;
    if (!project_.ProjName.empty())
        caption += " - [" + project_.ProjName + (project_.modified ? "*]" : "]");
    window_.showCaption(caption);
}

void ProjectLifecycle::NewProjectCommand() {
    if (!saveModifiedProject("Do you want to save current project before create new one?"))
        return;
    InitProject();
    createChosenProject();
}

void ProjectLifecycle::OpenProjectCommand() {
    if (leaveProjectToOpen())
        openChosenProject();
}

void ProjectLifecycle::openGivenProject(const std::string& path) {
    if (leaveProjectToOpen())
        openProjectFile(path);
}

bool ProjectLifecycle::leaveProjectToOpen() {
    if (!saveModifiedProject("Do you want to save current project before open new one?"))
        return false;
    InitProject();
    return true;
}

void ProjectLifecycle::ReloadCommand() {
    const std::string path = projectFilePath(environment_.paths, project_.ProjPath, project_.ProjName);
    NoMessages silent;
    Project tried;
    if (!readProjectWithoutWriting(path, tried, {environment_.paths, silent})) {
        messages_.show(MessageIcon::None, "Unable to open " + path);
        return;
    }
    InitProject();
    openProjectFile(path);
}

SaveOutcome ProjectLifecycle::save(const std::string& folder, const std::string& name) {
    window_.beforeSaving(projectFilePath(environment_.paths, folder, name));
    return SaveProject(folder, name, project_, fileContext());
}

SaveOutcome ProjectLifecycle::SaveCommand() {
    const SaveOutcome outcome = save(project_.ProjPath, project_.ProjName);
    if (outcome != SaveOutcome::ProjectFileFailed) {
        fileRemarks_ = {};
        SetModified(false);
    }
    return outcome;
}

void ProjectLifecycle::SaveAsCommand() {
    const auto path = chooser_.chooseSaveAsPath(project_.ProjName);
    const auto parts = path ? environment_.paths.split(*path) : std::nullopt;
    if (!parts)
        return;
    const std::string name = projectNameOfFile(parts->name);
    if (save(parts->folder, name) == SaveOutcome::ProjectFileFailed)
        return;
    project_.ProjPath = parts->folder;
    project_.ProjName = name;
    fileRemarks_ = {};
    window_.showProjectName(name);
    SetModified(false);
    window_.follow(ProjectTransition::Opened);
}

void ProjectLifecycle::createChosenProject() {
    const auto chosen = chooser_.chooseNewProject({});
    if (!chosen)
        return;
    adoptUnsaved(*chosen);
    window_.follow(ProjectTransition::Opened);
}

void ProjectLifecycle::openChosenProject() {
    if (const auto chosen = chooser_.chooseExistingProject({}))
        openProject(projectFilePath(environment_.paths, chosen->ProjPath, chosen->ProjName), *chosen);
}

void ProjectLifecycle::openProjectFile(const std::string& path) {
    const std::string native = environment_.paths.nativeForm(path);
    const auto parts = environment_.paths.split(native);
    if (!parts || !endsWithIgnoringCase(parts->name, projectExtension)) {
        messages_.show(MessageIcon::None, "Unable to open " + native);
        return;
    }
    openProject(native, {parts->folder, projectNameOfFile(parts->name)});
}

void ProjectLifecycle::openProject(const std::string& path, const ChosenProject& chosen) {
    FileRemarks met;
    const auto beforeReplacing = [&](const std::string& folder, const FileRemarks& remarks) {
        met = remarks;
        window_.beforeReplacing(folder, remarks);
    };
    if (!ReadProject(path, project_, fileContext(), beforeReplacing))
        return;
    fileRemarks_ = std::move(met);
    setIdentity(chosen);
    window_.RefreshViews();
    SetModified(false);
    window_.follow(ProjectTransition::Opened);
}

bool ProjectLifecycle::openUnsavedWork(const Project& work) {
    if (!leaveProjectToOpen())
        return false;
    project_ = work;
    adoptUnsaved({work.ProjPath, work.ProjName});
    window_.follow(ProjectTransition::Opened);
    return true;
}

bool ProjectLifecycle::saveModifiedProject(const std::string& question) {
    const bool save = project_.modified && messages_.askYesNo(question);
    return !save || SaveCommand() != SaveOutcome::ProjectFileFailed;
}

void ProjectLifecycle::adoptDownloadedProject(const ChosenProject& target, FileRemarks remarks) {
    fileRemarks_ = std::move(remarks);
    adoptUnsaved(target);
    window_.follow(ProjectTransition::ProjectCommands);
}

void ProjectLifecycle::adoptUnsaved(const ChosenProject& chosen) {
    setIdentity(chosen);
    window_.RefreshViews();
    SetModified(true);
}

void ProjectLifecycle::setIdentity(const ChosenProject& chosen) {
    project_.ProjPath = chosen.ProjPath;
    project_.ProjName = chosen.ProjName;
}

} // namespace orvista::DocMgrModule
