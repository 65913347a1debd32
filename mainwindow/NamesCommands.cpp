#include "mainwindow/NamesCommands.h"

#include "items/NotesFile.h"
#include "mainwindow/OpenNotes.h"
#include "model/SystemPath.h"
#include "sheets/NameSheet.h"
#include "sheets/forms/frmNames.h"
#include "sheets/forms/frmSheetErrors.h"
#include "widgets/PathText.h"

#include <QFileInfo>

#include <filesystem>
#include <system_error>
#include <utility>

namespace orvista {

NamesCommands::NamesCommands(const DocMgrModule::ProjectLifecycle& lifecycle, OpenNotes& notes,
                             QWidget& window)
    : QObject(&window), lifecycle_(lifecycle), notes_(notes), window_(window) {}

QString NamesCommands::hindrance() const {
    const Project& project = lifecycle_.project();
    const std::string path =
        DocMgrModule::projectFilePath(lifecycle_.environment().paths, project.ProjPath, project.ProjName);
    std::error_code unknown;
    if (project.ProjName.empty() || !std::filesystem::exists(systemPath(path), unknown))
        return tr("Save the project first: the notes lie beside it.");
    if (!notes_.fault().empty())
        return tr("%1. Mend or remove the file first.").arg(QString::fromStdString(notes_.fault()));
    return {};
}

void NamesCommands::miToolsNames_Click() {
    notes_.readAgain(); // somebody else may have written them
    edit({}, {});
}

void NamesCommands::import(const std::string& path, const std::string& bytes) {
    notes_.readAgain();
    const QString table = QFileInfo(shownPath(path)).fileName();
    const NameImport names = importNames(bytes, notes_.notes());
    if (names.errors.none())
        edit(table, noteChanges(notes_.notes(), names.notes));
    else
        frmSheetErrors(table, names.errors, &window_).exec();
}

void NamesCommands::edit(const QString& table, std::vector<NoteChange> changes) {
    const std::string path = notesPath(lifecycle_.project());
    frmNames dialog({lifecycle_.project(), notes_.notes(), table, std::move(changes), hindrance(),
                     [&path](const ProjectNotes& before, const ProjectNotes& after) -> QString {
                         try {
                             changeNotes(path, before, after);
                             return {};
                         } catch (const NotesFailure& failure) {
                             return QString::fromStdString(failure.what());
                         }
                     }},
                    &window_);
    if (dialog.exec() == QDialog::Accepted)
        notes_.takeWritten();
}

} // namespace orvista
