#include "mainwindow/SheetCommands.h"

#include "compare/DisplayContents.h"
#include "items/AddressList.h"
#include "items/NotesFile.h"
#include "mainwindow/PanelDock.h"
#include "mainwindow/ProjectChanges.h"
#include "model/FileReplacing.h"
#include "model/Text.h"
#include "model/UtcTime.h"
#include "sheets/AddressSheet.h"
#include "sheets/MessageSheet.h"
#include "sheets/VariableSheet.h"
#include "sheets/forms/AddressPdf.h"
#include "sheets/forms/frmSheetErrors.h"
#include "sheets/forms/frmSheetImport.h"
#include "widgets/FileChoice.h"
#include "widgets/PathText.h"

#include <QFileInfo>

#include <system_error>

namespace orvista {

namespace {

enum MessageFilter { Scripts, Pages };

QString fileName(const std::string& path) {
    return QFileInfo(shownPath(path)).fileName();
}

/// Without a fingerprint where a bitmap cannot be read.
AddressHead headOf(const Project& project) {
    AddressHead head{.fingerprint = {},
                     .time = utcText(presentMoment()),
                     .display = readNotesFile(notesPath(project)).notes.displayName,
                     .release = ORVISTA_RELEASE};
    try {
        head.fingerprint = fingerprint(DisplayContents::ofProject(project));
    } catch (const std::system_error&) {
        return head;
    }
    return head;
}

/// The list in the form that the file's ending names; nothing for another ending.
std::optional<std::string> addressListFor(const std::string& path, const Project& project) {
    const auto rows = addressList(project);
    const auto endsWith = [&path](std::string_view end) { return endsWithIgnoringCase(path, end); };
    if (endsWith(".csv"))
        return addressCsv(rows);
    if (endsWith(".html") || endsWith(".htm"))
        return addressHtml(rows, project, headOf(project));
    if (endsWith(".pdf"))
        return addressPdf(addressHtmlBody(rows, project, headOf(project)),
                          SheetCommands::tr("Addresses of %1").arg(shownPath(project.ProjName)))
            .toStdString();
    return std::nullopt;
}

} // namespace

SheetCommands::SheetCommands(const DocMgrModule::ProjectLifecycle& lifecycle, ProjectChanges& changes,
                             PanelDock& dock, QWidget& window)
    : QObject(&window),
      lifecycle_(lifecycle),
      project_(lifecycle.project()),
      messages_(lifecycle.fileContext().messages),
      changes_(changes),
      dock_(dock),
      window_(window) {}

QString SheetCommands::proposedName(const QString& subject) const {
    return shownPath(project_.ProjName) + u' ' + subject;
}

void SheetCommands::miToolsExportAddresses_Click() {
    const auto chosen =
        chooseFileToWrite({tr("Export Address List"),
                           {tr("Table (*.csv)"), tr("Web page (*.html)"), tr("PDF to print (*.pdf)")},
                           project_.ProjPath,
                           proposedName(tr("addresses.csv"))},
                          &window_);
    if (!chosen)
        return;
    if (const auto bytes = addressListFor(chosen->path, project_))
        write(chosen->path, *bytes);
    else
        messages_.show(MessageIcon::Exclamation, chosen->path + " does not end in .csv, .html or .pdf");
}

void SheetCommands::miToolsExportMessages_Click() {
    const auto chosen = chooseFileToWrite(
        {tr("Export Messages"),
         {tr("Scripts, a row for each message (*.csv)"), tr("Pages, a row for each page (*.csv)")},
         project_.ProjPath,
         proposedName(tr("messages.csv"))},
        &window_);
    if (!chosen)
        return;
    const MessageSheet sheet =
        messageSheet(project_, chosen->filter == Pages ? MessageSheetForm::Pages : MessageSheetForm::Scripts);
    if (const std::string fault = sheetSizeFault(sheet.csv); !fault.empty())
        return messages_.show(MessageIcon::Exclamation, fault);
    write(chosen->path, sheet.csv);
    QStringList mended;
    for (const Item message : sheet.mendedLineEnds)
        mended << QString::fromStdString(nameOf(message));
    if (!mended.isEmpty())
        dock_.showNotice(tr("%1: lone CR or LF was written as CR LF").arg(mended.join(u' ')));
}

void SheetCommands::miToolsExportVariables_Click() {
    const auto chosen = chooseFileToWrite({tr("Export Variables"),
                                           {tr("Variables (*.csv)")},
                                           project_.ProjPath,
                                           proposedName(tr("variables.csv"))},
                                          &window_);
    if (chosen)
        write(chosen->path, variableSheet(project_));
}

void SheetCommands::write(const std::string& path, const std::string& bytes) {
    try {
        replaceFile(path, bytes);
    } catch (const std::system_error&) {
        messages_.show(MessageIcon::Exclamation, "unable to save " + path);
    }
}

void SheetCommands::miToolsImportMessages_Click() {
    chooseAndImport(SheetSubject::Messages);
}

void SheetCommands::miToolsImportVariables_Click() {
    chooseAndImport(SheetSubject::Variables);
}

void SheetCommands::chooseAndImport(SheetSubject subject) {
    const bool messages = subject == SheetSubject::Messages;
    const auto chosen = chooseFileToRead({messages ? tr("Import Messages") : tr("Import Variables"),
                                          {tr("Table (*.csv)"), tr("All files (*)")},
                                          project_.ProjPath},
                                         &window_);
    if (chosen)
        import(chosen->path, subject);
}

void SheetCommands::importAny(const std::string& path) {
    import(path, std::nullopt);
}

void SheetCommands::import(const std::string& path, std::optional<SheetSubject> subject) {
    std::string bytes;
    try {
        bytes = sheetBytes(path);
    } catch (const std::system_error&) {
        return messages_.show(MessageIcon::None, "Unable to open " + path);
    }
    // What is neither is read as messages, which tells what is wrong with it.
    const bool variables =
        subject.value_or(sheetSubject(bytes).value_or(SheetSubject::Messages)) == SheetSubject::Variables;
    take(path, variables ? importVariables(bytes, project_) : importMessages(bytes, project_));
}

void SheetCommands::take(const std::string& path, SheetImport sheet) {
    if (!sheet.errors.none()) {
        frmSheetErrors(fileName(path), sheet.errors, &window_).exec();
        return;
    }
    // Before the user has chosen among many rows, not after.
    if (!changes_.mayChange(itemsOf(sheet.changes)))
        return;
    frmSheetImport dialog(fileName(path), std::move(sheet.changes), sheet.fromEmptyCells, &window_);
    dialog.exec();
    if (dialog.IsCanceled || dialog.chosen.empty())
        return;
    const auto parts = lifecycle_.environment().paths.split(lifecycle_.environment().paths.nativeForm(path));
    if (changes_.change(tr("Import"), dialog.chosen) && parts)
        emit itemsCameFrom(parts->folder);
}

} // namespace orvista
