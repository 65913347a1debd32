#pragma once

#include "model/History.h"
#include "model/People.h"
#include "model/Project.h"
#include "model/ProjectLifecycle.h"

#include <QPointer>
#include <QWidget>

namespace orvista {

/// Lets the user choose projects in modal dialogs.
class DialogProjectChooser final : public ProjectChooser {
public:
    /// Everything referred to must outlive the chooser.
    DialogProjectChooser(const ConfigModule::History& history,
                         const DocMgrModule::ProgramEnvironment& environment, const Project& project,
                         Messages& messages, QWidget* parent = nullptr);
    /// The dialogs are modal to `parent`, which is often made after the one who shows them.
    void useParent(QWidget* parent) { parent_ = parent; }

    StartupChoice chooseAtStartup() override;
    std::optional<ChosenProject> chooseNewProject(const std::string& caption) override;
    std::optional<ChosenProject> chooseExistingProject(const std::string& caption) override;
    /// The extension is added unless the name ends in it; an existing file is replaced only after a question
    /// about the very path that will be written.
    std::optional<std::string> chooseSaveAsPath(const std::string& proposedName) override;

private:
    const ConfigModule::History& history_;
    const DocMgrModule::ProgramEnvironment& environment_;
    const Project& project_;
    Messages& messages_;
    QPointer<QWidget> parent_;
};

} // namespace orvista
