#pragma once

#include "model/History.h"
#include "model/People.h"
#include "model/ProjectFile.h"

#include <string>

namespace orvista::DocMgrModule {

inline constexpr const char* programTitle = "Orvista Message Editor";

/// Where the program runs: found once at start, injected so that tests never write beside the real program.
struct ProgramEnvironment {
    std::string programFolder; ///< UTF-8, without a trailing separator; the real file's, not a link's
    PathRules paths = PathRules::native();
};

/// The life of the one project: new, open, save, save as, and the modified mark with the caption.
class ProjectLifecycle final : public ModifiedMark {
public:
    ProjectLifecycle(Project& project, ConfigModule::History& history, const ProgramEnvironment& environment,
                     Messages& messages, ProjectChooser& chooser, ProjectWindow& window);

    /// Resets the model in place, refreshes the views and disables the project commands.
    void InitProject();
    void SetModified(bool modified) override;
    void RefreshCaption();

    void NewProjectCommand();
    void OpenProjectCommand();
    /// Open with this path (absolute, UTF-8) in place of the dialog: the question, the reset, the file. Where
    /// the file cannot be read, there is no project afterwards, as after a failed Open.
    void openGivenProject(const std::string& path);
    /// Reads the project's own file again, without a question: what is not saved is lost. A file that cannot
    /// be read changes nothing.
    void ReloadCommand();
    /// Saves under the current folder and name, without a dialog.
    SaveOutcome SaveCommand();
    void SaveAsCommand();

    /// New and Open without question and reset, as the start-up dialog's choice runs them.
    void createChosenProject();
    void openChosenProject();
    /// Opens the project file of that path, as given on the command line.
    void openProjectFile(const std::string& path);

    /// Makes work that was never saved the project, as a new one is: modified, and nothing is written. Asks
    /// first as Open does; false when the save that was wanted failed.
    bool openUnsavedWork(const Project& work);

    /// Asks `question` when the project is modified and saves on Yes. False when that save failed to write
    /// the project file: the command that asked stops there.
    bool saveModifiedProject(const std::string& question);

    /// After a download: unlike a new project, it cannot be uploaded before it is saved.
    /// \param remarks what was met in its files
    void adoptDownloadedProject(const ChosenProject& target, FileRemarks remarks = {});

    FileContext fileContext() const { return {environment_.paths, messages_}; }
    const ProgramEnvironment& environment() const { return environment_; }
    const Project& project() const { return project_; }
    /// What was met in the files that the project was read from; nothing once it is saved.
    const FileRemarks& fileRemarks() const { return fileRemarks_; }

private:
    /// False when the project could not be saved and stays.
    bool leaveProjectToOpen();
    SaveOutcome save(const std::string& folder, const std::string& name);
    void setIdentity(const ChosenProject& chosen);
    /// The project in memory gets its identity and is modified: it has no file yet.
    void adoptUnsaved(const ChosenProject& chosen);
    void openProject(const std::string& path, const ChosenProject& chosen);

    Project& project_;
    ConfigModule::History& history_;
    const ProgramEnvironment& environment_;
    Messages& messages_;
    ProjectChooser& chooser_;
    ProjectWindow& window_;
    FileRemarks fileRemarks_;
};

} // namespace orvista::DocMgrModule
