#include "dialogs/DialogProjectChooser.h"

#include "dialogs/DialogMessages.h"
#include "dialogs/FolderContents.h"
#include "dialogs/NameableFolder.h"
#include "dialogs/frmLoadProject.h"
#include "dialogs/frmNewProject.h"
#include "dialogs/frmStartup.h"
#include "model/FolderLookup.h"
#include "model/ProjectFile.h"
#include "model/SystemPath.h"
#include "model/Text.h"
#include "widgets/PathText.h"

#include <QFileDialog>

#include <filesystem>

namespace orvista {

namespace {

/// What the user sees of it is the part before the pattern; the file dialogs match in any case.
constexpr const char* projectFilter = "Orvista Project(*orx) (*.orx)";

std::string withExtension(std::string path) {
    if (!endsWithIgnoringCase(path, DocMgrModule::projectExtension))
        path += DocMgrModule::projectExtension;
    return path;
}

bool existsOnDisk(const PathRules& paths, const std::string& path) {
    std::error_code error;
    return std::filesystem::exists(systemPath(projectFileOnDisk(paths, path)), error);
}

} // namespace

DialogProjectChooser::DialogProjectChooser(const ConfigModule::History& history,
                                           const DocMgrModule::ProgramEnvironment& environment,
                                           const Project& project, Messages& messages, QWidget* parent)
    : history_(history), environment_(environment), project_(project), messages_(messages), parent_(parent) {}

StartupChoice DialogProjectChooser::chooseAtStartup() {
    frmStartup dialog(history_.holdsProject(), parent_);
    dialog.exec();
    if (dialog.IsCanceled)
        return StartupChoice::Cancelled;
    return dialog.bCreateNew ? StartupChoice::CreateNew : StartupChoice::LoadExisting;
}

std::optional<ChosenProject> DialogProjectChooser::chooseNewProject(const std::string& caption) {
    frmNewProject dialog(environment_, messages_, parent_);
    if (!caption.empty())
        dialog.setWindowTitle(QString::fromStdString(caption));
    dialog.exec();
    return dialog.IsCanceled ? std::nullopt : std::optional(ChosenProject{dialog.ProjPath, dialog.ProjName});
}

std::optional<ChosenProject> DialogProjectChooser::chooseExistingProject(const std::string& caption) {
    frmLoadProject dialog(history_, environment_, parent_);
    if (!caption.empty())
        dialog.setWindowTitle(QString::fromStdString(caption));
    dialog.exec();
    return dialog.IsCanceled ? std::nullopt : std::optional(ChosenProject{dialog.ProjPath, dialog.ProjName});
}

std::optional<std::string> DialogProjectChooser::chooseSaveAsPath(const std::string& proposedName) {
    const PathRules& paths = environment_.paths;
    const NameableFolder start(paths, startFolder(paths, project_.ProjPath));
    QFileDialog comdlg(parent_, QStringLiteral("Save as"), start.shown(), QString::fromLatin1(projectFilter));
    comdlg.setObjectName("comdlg");
    comdlg.setAcceptMode(QFileDialog::AcceptSave);
    comdlg.setFileMode(QFileDialog::AnyFile);
    // The dialog's own question would name the path without its extension.
    comdlg.setOption(QFileDialog::DontConfirmOverwrite);
    comdlg.setOption(QFileDialog::HideNameFilterDetails);
    comdlg.selectFile(shownPath(proposedName));
    while (comdlg.exec() == QDialog::Accepted && !comdlg.selectedFiles().isEmpty()) {
        const std::string path = withExtension(start.meant(comdlg.selectedFiles().front()));
        if (!existsOnDisk(paths, path) || confirmReplacing(parent_, path))
            return path;
    }
    return std::nullopt;
}

} // namespace orvista
