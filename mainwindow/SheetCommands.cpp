#include "mainwindow/SheetCommands.h"

#include "compare/DisplayContents.h"
#include "display/FolderBitmaps.h"
#include "items/AddressList.h"
#include "items/NotesFile.h"
#include "mainwindow/PanelDock.h"
#include "mainwindow/ProjectChanges.h"
#include "model/FileReplacing.h"
#include "model/Text.h"
#include "model/UtcTime.h"
#include "sheets/AddressSheet.h"
#include "sheets/BookHtml.h"
#include "sheets/MessageBook.h"
#include "sheets/MessageSheet.h"
#include "sheets/PlcOpenXml.h"
#include "sheets/StructuredText.h"
#include "sheets/VariableSheet.h"
#include "sheets/forms/PrintedPdf.h"
#include "sheets/forms/frmAddressList.h"
#include "sheets/forms/frmBook.h"
#include "sheets/forms/frmSheetErrors.h"
#include "sheets/forms/frmSheetImport.h"
#include "widgets/FileChoice.h"
#include "widgets/PathText.h"
#include "widgets/WorkProgress.h"

#include <QFileInfo>
#include <QGuiApplication>

#include <array>
#include <stdexcept>
#include <system_error>
#include <utility>
#include <vector>

namespace orvista {

namespace {

enum MessageFilter { Scripts, Pages };

QString fileName(const std::string& path) {
    return QFileInfo(shownPath(path)).fileName();
}

/// Without a fingerprint where a bitmap cannot be read.
AddressHead headOf(const Project& project, const ProjectNotes& notes) {
    AddressHead head{.fingerprint = {},
                     .time = utcText(presentMoment()),
                     .display = notes.displayName,
                     .release = ORVISTA_RELEASE};
    try {
        head.fingerprint = fingerprint(DisplayContents::ofProject(project));
    } catch (const std::system_error&) {
        return head;
    }
    return head;
}

/// The form of an address list that a file's ending names.
enum class ListForm { Csv, Html, Pdf, StructuredText, PlcOpenXml };

std::optional<ListForm> listForm(const std::string& path) {
    constexpr auto endings =
        std::to_array<std::pair<std::string_view, ListForm>>({{".csv", ListForm::Csv},
                                                              {".html", ListForm::Html},
                                                              {".htm", ListForm::Html},
                                                              {".pdf", ListForm::Pdf},
                                                              {".st", ListForm::StructuredText},
                                                              {".xml", ListForm::PlcOpenXml}});
    for (const auto& [ending, form] : endings)
        if (endsWithIgnoringCase(path, ending))
            return form;
    return std::nullopt;
}

/// What cannot be written; what() says why.
class NoAddressList : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// \throws NoAddressList where names of the program are none, or become equal
std::string plcList(ListForm form, const std::vector<AddressRow>& rows, const Project& project,
                    const AddressHead& head, const std::string& prefix) {
    const PlcNames names = plcNames(rows, prefix);
    if (!names.faults.empty())
        throw NoAddressList(plcFaultText(names));
    const PlcVariables variables = plcVariables(rows, names, prefix, project);
    return form == ListForm::StructuredText ? structuredText(variables, project, head)
                                            : plcOpenXml(variables, project, head);
}

/// \throws NoAddressList
std::string addressListIn(ListForm form, const Project& project, const frmAddressList& wanted) {
    const ProjectNotes notes = readNotesFile(notesPath(project)).notes;
    auto rows = addressList(project, wanted.UsedOnly ? AddressRows::UsedOnly : AddressRows::All);
    addNotes(rows, notes);
    if (form == ListForm::Csv)
        return addressCsv(rows);
    const AddressHead head = headOf(project, notes);
    if (form == ListForm::Html)
        return addressHtml(rows, project, head);
    if (form == ListForm::Pdf)
        return printedPdf(addressHtmlBody(rows, project, head),
                          SheetCommands::tr("Addresses of %1").arg(shownPath(project.ProjName)))
            .toStdString();
    return plcList(form, rows, project, head, wanted.Prefix);
}

/// The pointer of a program that is at work, for as long as this is there.
class BusyPointer {
public:
    BusyPointer() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~BusyPointer() { QGuiApplication::restoreOverrideCursor(); }
    BusyPointer(const BusyPointer&) = delete;
    BusyPointer& operator=(const BusyPointer&) = delete;
};

/// The user has stopped a long work.
class WorkStopped {};

/// \param columns of the display
/// \throws WorkStopped
std::string bookIn(ListForm form, const Project& project, const frmBook& wanted, int columns,
                   const BookStep& step) {
    const ProjectNotes notes = readNotesFile(notesPath(project)).notes;
    const MessageBook book =
        messageBook(project, notes, FolderBitmaps(project.ProjPath),
                    {.columns = columns,
                     .addresses = wanted.UsedOnly ? AddressRows::UsedOnly : AddressRows::All,
                     .widest = wanted.Widest},
                    step);
    const AddressHead head = headOf(project, notes);
    if (form == ListForm::Html)
        return bookHtml(book, project, head, step);
    return printedPdf(bookHtmlBody(book, project, head, step),
                      SheetCommands::tr("Messages of %1").arg(shownPath(project.ProjName)), step)
        .toStdString();
}

} // namespace

SheetCommands::SheetCommands(const DocMgrModule::ProjectLifecycle& lifecycle, ProjectChanges& changes,
                             PanelDock& dock, PreviewSettingSource setting, QWidget& window)
    : QObject(&window),
      lifecycle_(lifecycle),
      project_(lifecycle.project()),
      messages_(lifecycle.fileContext().messages),
      changes_(changes),
      dock_(dock),
      setting_(std::move(setting)),
      window_(window) {}

QString SheetCommands::proposedName(const QString& subject) const {
    return shownPath(project_.ProjName) + u' ' + subject;
}

void SheetCommands::miToolsExportAddresses_Click() {
    frmAddressList wanted(&window_);
    wanted.exec();
    if (wanted.IsCanceled)
        return;
    const auto chosen =
        chooseFileToWrite({tr("Export Address List"),
                           {tr("Table (*.csv)"), tr("Web page (*.html)"), tr("PDF to print (*.pdf)"),
                            tr("Structured Text (*.st)"), tr("PLCopen XML (*.xml)")},
                           project_.ProjPath,
                           proposedName(tr("addresses.csv"))},
                          &window_);
    if (!chosen)
        return;
    const auto form = listForm(chosen->path);
    if (!form)
        return messages_.show(MessageIcon::Exclamation,
                              chosen->path + " does not end in .csv, .html, .pdf, .st or .xml");
    try {
        write(chosen->path, addressListIn(*form, project_, wanted));
    } catch (const NoAddressList& failure) {
        messages_.show(MessageIcon::Exclamation, failure.what());
    }
}

void SheetCommands::miToolsBook_Click() {
    frmBook wanted(&window_);
    wanted.exec();
    if (wanted.IsCanceled)
        return;
    const auto chosen = chooseFileToWrite({tr("Export Message Book"),
                                           {tr("Web page (*.html)"), tr("PDF to print (*.pdf)")},
                                           project_.ProjPath,
                                           proposedName(tr("messages.html"))},
                                          &window_);
    if (!chosen)
        return;
    const auto form = listForm(chosen->path);
    if (form != ListForm::Html && form != ListForm::Pdf)
        return messages_.show(MessageIcon::Exclamation, chosen->path + " does not end in .html or .pdf");
    const BusyPointer busy;
    WorkProgress progress(window_, QStringLiteral("frmBookProgress"), tr("Writing the message book\u2026"));
    try {
        const std::string bytes = bookIn(*form, project_, wanted, setting_().columns, [&progress] {
            if (!progress.goesOn())
                throw WorkStopped();
        });
        progress.reset();
        write(chosen->path, bytes);
    } catch (const WorkStopped&) {
        // Nothing is written: what the file held before is still there.
    }
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
    const auto told = sheetSubject(bytes);
    if (told == SheetSubject::Names)
        return emit namesCame(path, bytes);
    // What is none is read as messages, which tells what is wrong with it.
    const bool variables = subject.value_or(told.value_or(SheetSubject::Messages)) == SheetSubject::Variables;
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
    frmSheetImport dialog(fileName(path), std::move(sheet), project_, setting_, &window_);
    dialog.exec();
    if (dialog.IsCanceled || dialog.chosen.empty())
        return;
    const auto parts = lifecycle_.environment().paths.split(lifecycle_.environment().paths.nativeForm(path));
    if (changes_.change(tr("Import"), dialog.chosen) && parts)
        emit itemsCameFrom(parts->folder);
}

} // namespace orvista
