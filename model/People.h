#pragma once

#include "model/CommandEnabling.h"
#include "model/FileRemarks.h"

#include <optional>
#include <string>

/// How the core reaches people. The main window and the dialogs implement these; tests script them.
/// All texts are UTF-8.
namespace orvista {

enum class MessageIcon { None, Information, Exclamation };
enum class Answer { Yes, No, Cancel };

class Messages {
public:
    virtual ~Messages() = default;
    /// A message box with an OK button only, under the program's title.
    virtual void show(MessageIcon icon, const std::string& text) = 0;
    /// Yes and No with the information icon; Yes is the default and there is no way to cancel.
    virtual bool askYesNo(const std::string& text) = 0;
    virtual Answer askYesNoCancel(const std::string& text) = 0;
};

/// A project as the dialogs name it: folder without a trailing separator, name without extension.
struct ChosenProject {
    std::string ProjPath;
    std::string ProjName;
    bool operator==(const ChosenProject&) const = default;
};

enum class StartupChoice { Cancelled, CreateNew, LoadExisting };

/// Every choice returns nothing when the user cancelled.
class ProjectChooser {
public:
    virtual ~ProjectChooser() = default;
    virtual StartupChoice chooseAtStartup() = 0;
    /// `caption` replaces the dialog's own when it is not empty.
    virtual std::optional<ChosenProject> chooseNewProject(const std::string& caption) = 0;
    virtual std::optional<ChosenProject> chooseExistingProject(const std::string& caption) = 0;
    /// The full path to save under, with extension, after any question about replacing it.
    virtual std::optional<std::string> chooseSaveAsPath(const std::string& proposedName) = 0;
};

/// What the project's life needs of the main window.
class ProjectWindow {
public:
    virtual ~ProjectWindow() = default;
    /// Rewrites every page from the model.
    virtual void RefreshViews() = 0;
    virtual void showCaption(const std::string& caption) = 0;
    /// Enables and disables its commands by what happened.
    virtual void follow(ProjectTransition transition) = 0;
    /// Rewrites the project name on the System page and nothing else, so that unapplied edits stay.
    virtual void showProjectName(const std::string& name) = 0;
    /// Opening a project file in which this was met is about to replace the device files of that folder.
    virtual void beforeReplacing(const std::string& folder, const FileRemarks& remarks) = 0;
    /// A save is about to replace the project file of that path, or to write it for the first time.
    virtual void beforeSaving(const std::string& path) = 0;
};

/// What a page needs of the project's life.
class ModifiedMark {
public:
    virtual ~ModifiedMark() = default;
    virtual void SetModified(bool modified) = 0;
};

} // namespace orvista
