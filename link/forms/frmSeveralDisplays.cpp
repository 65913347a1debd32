#include "link/forms/frmSeveralDisplays.h"

#include "items/NotesFile.h"
#include "link/ProjectSnapshot.h"
#include "model/FileReplacing.h"
#include "model/Files.h"
#include "model/PathRules.h"
#include "model/People.h"
#include "model/Project.h"
#include "model/ScratchFolder.h"
#include "model/SystemPath.h"
#include "sheets/FleetSheet.h"
#include "widgets/FileChoice.h"
#include "widgets/FormParts.h"
#include "widgets/PathText.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <filesystem>
#include <optional>
#include <stdexcept>
#include <system_error>

namespace orvista {

namespace {

/// Many displays tell of a file every few milliseconds; nobody reads faster than this.
constexpr int refreshMilliseconds = 100;
/// How many errors of a list fit into a box.
constexpr std::size_t mostErrorsShown = 10;

QString errorsText(const SheetErrors& errors, const QString& source) {
    QStringList lines{source};
    const auto sorted = errors.sorted();
    for (std::size_t i = 0; i < std::min(sorted.size(), mostErrorsShown); ++i)
        lines << QString::fromStdString(errorText(sorted[i]));
    if (errors.count() > mostErrorsShown)
        lines << QObject::tr("and %1 more").arg(errors.count() - mostErrorsShown);
    return lines.join(u'\n');
}

} // namespace

frmSeveralDisplays::frmSeveralDisplays(Work work, QWidget* parent)
    : QDialog(parent),
      work_(std::move(work)),
      tblDisplays(named<RowsTable>(QStringLiteral("tblDisplays"), FleetRows::heads())),
      chkCheckFirst(named<QCheckBox>(QStringLiteral("chkCheckFirst"), tr("C&heck First"))),
      chkSkipEqual(named<QCheckBox>(QStringLiteral("chkSkipEqual"), tr("S&kip Equal"))),
      chkVerify(named<QCheckBox>(QStringLiteral("chkVerify"), tr("&Verify"))) {
    setObjectName(QStringLiteral("frmSeveralDisplays"));
    setWindowTitle(tr("Upload to Several Displays"));
    buildLayout();
    refresh_.setSingleShot(true);
    refresh_.setInterval(refreshMilliseconds);
    connect(&refresh_, &QTimer::timeout, this, &frmSeveralDisplays::showRows);
    connect(&process_, &FleetProcess::changed, this, [this](const FleetProcess::State& state) {
        FleetProcess::State known = state;
        known.reason = withoutCopy(known.reason);
        rows_.note(known);
        if (!refresh_.isActive())
            refresh_.start();
    });
    connect(&process_, &FleetProcess::ended, this, &frmSeveralDisplays::processEnded);
    for (FleetDisplay& display : work_.displays)
        display.project = work_.projectFile; // however the list names it
    rows_ = FleetRows(work_.displays);
    showRows();
    enableButtons();
}

frmSeveralDisplays::~frmSeveralDisplays() {
    process_.disconnect(this);
    process_.stopNow();
}

QPushButton* frmSeveralDisplays::button(const char* name, const QString& caption, const QString& toolTip,
                                        void (frmSeveralDisplays::*click)()) {
    QPushButton* const made = namedButton(QString::fromLatin1(name), caption, this);
    made->setToolTip(toolTip);
    connect(made, &QPushButton::clicked, this, click);
    return made;
}

QLayout* frmSeveralDisplays::buildUpperRow() {
    using Form = frmSeveralDisplays;
    btnLoad = button("btnLoad", tr("&Load List…"),
                     tr("A table with the columns name, address, port, project"), &Form::btnLoad_Click);
    btnPaste = button("btnPaste", tr("&Paste List"), tr("The same from the clipboard, with its head line"),
                      &Form::btnPaste_Click);
    lblDisplays = labelFor(tblDisplays, {});
    lblDisplays->setObjectName(QStringLiteral("lblDisplays"));
    lblDisplays->setWordWrap(true); // small screens need the room
    tblDisplays->setAccessibleName(tr("Displays"));
    chkCheckFirst->setToolTip(tr("Send nothing to displays whose project has errors"));
    chkSkipEqual->setToolTip(tr("Send nothing to displays that have the project already"));
    chkVerify->setToolTip(tr("Fetch every file once more and compare it byte for byte"));
    auto* const row = new QHBoxLayout;
    row->addWidget(btnLoad);
    row->addWidget(btnPaste);
    row->addWidget(lblDisplays, 1);
    for (QCheckBox* const box : {chkCheckFirst, chkSkipEqual, chkVerify})
        row->addWidget(box);
    return row;
}

QLayout* frmSeveralDisplays::buildLowerRow() {
    using Form = frmSeveralDisplays;
    btnStart =
        button("btnStart", tr("&Start"), tr("Send to all displays of the list"), &Form::btnStart_Click);
    btnCompare = button("btnCompare", tr("&Compare"),
                        tr("Send nothing: tell which displays hold something else than the project"),
                        &Form::btnCompare_Click);
    btnStop = button("btnStop", tr("S&top"), tr("End all transfers; the table tells what is half done"),
                     &Form::btnStop_Click);
    btnAgain = button("btnAgain", tr("&Failed Ones Again"),
                      tr("Do the same again with those that failed or are half done"), &Form::btnAgain_Click);
    btnReport =
        button("btnReport", tr("Save &Report…"), tr("Write the results as a table"), &Form::btnReport_Click);
    btnCancel = button("btnCancel", tr("Close"), tr("Ends what is still running"), &Form::reject);
    auto* const row = new QHBoxLayout;
    for (QPushButton* const widget : {btnStart, btnCompare, btnStop, btnAgain})
        row->addWidget(widget);
    row->addStretch(1);
    row->addWidget(btnReport);
    row->addWidget(btnCancel);
    return row;
}

void frmSeveralDisplays::buildLayout() {
    makeRoom(tblDisplays, {.characters = 130, .lines = 16});
    tblDisplays->makeEditable(FleetRows::typedColumns);
    connect(tblDisplays, &RowsTable::cellTyped, this, &frmSeveralDisplays::tblDisplays_CellTyped);
    connect(tblDisplays, &RowsTable::removalWanted, this, &frmSeveralDisplays::tblDisplays_RemovalWanted);
    auto* const layout = new QVBoxLayout(this);
    layout->addLayout(buildUpperRow());
    layout->addWidget(tblDisplays, 1);
    layout->addLayout(buildLowerRow());
}

void frmSeveralDisplays::tblDisplays_CellTyped(int row, int column, const QString& text) {
    const QString refusal =
        rows_.type(static_cast<std::size_t>(row), static_cast<FleetRows::TypedColumn>(column),
                   text.toStdString(), work_.projectFile);
    showRows();
    enableButtons();
    if (!refusal.isEmpty())
        work_.messages.show(MessageIcon::Exclamation, refusal.toStdString());
}

void frmSeveralDisplays::tblDisplays_RemovalWanted() {
    if (process_.isRunning())
        return;
    rows_.remove(tblDisplays->selectedRows());
    showRows();
    enableButtons();
}

void frmSeveralDisplays::btnLoad_Click() {
    const auto file = chooseFileToRead(
        {tr("Load List"), {tr("Table (*.csv)"), tr("All files (*)")}, work_.project.ProjPath}, this);
    if (!file)
        return;
    const std::string& path = file->path;
    try {
        const auto parts = PathRules::native().split(PathRules::native().nativeForm(path));
        takeList(sheetBytes(path), parts ? parts->folder : std::string(), shownPath(path));
    } catch (const std::system_error& failure) {
        work_.messages.show(MessageIcon::Exclamation, path + ": " + failure.code().message());
    }
}

void frmSeveralDisplays::btnPaste_Click() {
    takeList(QApplication::clipboard()->text().toStdString(), work_.project.ProjPath, tr("The clipboard"));
}

void frmSeveralDisplays::takeList(const std::string& bytes, const std::string& folder,
                                  const QString& source) {
    SheetErrors errors;
    auto displays = readFleetSheet(bytes, {folder, work_.projectFile, true}, errors);
    if (!errors.none())
        return work_.messages.show(MessageIcon::Exclamation, errorsText(errors, source).toStdString());
    rows_ = FleetRows(std::move(displays));
    showRows();
    enableButtons();
    btnStart->setFocus();
}

void frmSeveralDisplays::btnStart_Click() {
    start(rows_.displays(), Task::Upload);
}

void frmSeveralDisplays::btnCompare_Click() {
    start(rows_.displays(), Task::Compare);
}

void frmSeveralDisplays::btnAgain_Click() {
    start(rows_.failed(), task_);
}

void frmSeveralDisplays::btnStop_Click() {
    process_.stop();
    disableUsed(btnStop, tblDisplays);
}

QStringList frmSeveralDisplays::argumentsFor(Task task, const std::string& list) const {
    const bool compares = task == Task::Compare;
    QStringList arguments{compares ? QStringLiteral("compare") : QStringLiteral("upload"),
                          QStringLiteral("--list"), shownPath(list), QStringLiteral("--json"),
                          QStringLiteral("--until-input-ends")};
    if (compares)
        return arguments;
    for (const auto& [box, option] : {std::pair(chkCheckFirst, QStringLiteral("--check")),
                                      std::pair(chkSkipEqual, QStringLiteral("--skip-equal")),
                                      std::pair(chkVerify, QStringLiteral("--verify"))})
        if (box->isChecked())
            arguments << option;
    return arguments;
}

void frmSeveralDisplays::start(const std::vector<FleetDisplay>& displays, Task task) {
    task_ = task;
    try {
        scratch_ = std::make_unique<ScratchFolder>();
        const QStringList arguments = argumentsFor(task, writeList(displays));
        rows_.begin(displays);
        process_.start(shownPath(work_.program), arguments);
    } catch (const std::runtime_error& failure) { // of the files, or of the notes
        work_.messages.show(MessageIcon::Exclamation, failure.what());
    }
    showRows();
    enableButtons();
    if (process_.isRunning())
        btnStop->setFocus();
}

std::string frmSeveralDisplays::writeList(const std::vector<FleetDisplay>& displays) {
    const PathRules paths = PathRules::native();
    const std::string folder = paths.join(scratch_->path(), "project");
    std::filesystem::create_directory(systemPath(folder));
    const std::string copy = writeSnapshot(work_.project, folder);
    copy_ = shownPath(copy);
    ProjectNotes notes; // the rows say the rest
    notes.columns = work_.columns;
    if (work_.isMaster)
        notes.masterList = "displays.csv";
    changeNotes(notesPath(copy), {}, notes);
    std::vector<FleetDisplay> sent = displays;
    for (FleetDisplay& display : sent) {
        if (display.project == work_.projectFile)
            display.project = copy;
    }
    std::string list = paths.join(scratch_->path(), "displays.csv");
    FileSink sink(list);
    sink.write(fleetSheet(sent));
    sink.close();
    return list;
}

QString frmSeveralDisplays::withoutCopy(QString text) const {
    return text.replace(copy_, shownPath(work_.projectFile));
}

void frmSeveralDisplays::processEnded(std::vector<FleetResult> results, const QString& complaint) {
    for (FleetResult& result : results)
        result.end.reason = withoutCopy(QString::fromStdString(result.end.reason)).toStdString();
    const QString known = withoutCopy(complaint);
    rows_.finish(results, known);
    scratch_.reset();
    showRows();
    if (results.empty())
        work_.messages.show(MessageIcon::Exclamation, known.toStdString());
    const bool wasAtStop = btnStop->hasFocus();
    enableButtons();
    if (wasAtStop)
        (btnAgain->isEnabled() ? btnAgain : btnCancel)->setFocus();
}

void frmSeveralDisplays::btnReport_Click() {
    const auto file = chooseFileToWrite(
        {tr("Save Report"), {tr("Table (*.csv)")}, work_.project.ProjPath, QStringLiteral("report.csv")},
        this);
    if (!file)
        return;
    const std::string& path = file->path;
    try {
        replaceFile(path, fleetReport(rows_.results()));
    } catch (const std::system_error& failure) {
        work_.messages.show(MessageIcon::Exclamation, path + ": " + failure.code().message());
    }
}

void frmSeveralDisplays::reject() {
    process_.stopNow();
    QDialog::reject();
}

void frmSeveralDisplays::showRows() {
    tblDisplays->setRows(rows_.table(!process_.isRunning()));
    lblDisplays->setText(rows_.isEmpty() ? tr("Load, paste or type a list of displays.") : rows_.summary());
}

void frmSeveralDisplays::enableButtons() {
    const bool runs = process_.isRunning();
    for (QWidget* const widget : {static_cast<QWidget*>(btnLoad), static_cast<QWidget*>(btnPaste),
                                  static_cast<QWidget*>(chkCheckFirst), static_cast<QWidget*>(chkSkipEqual),
                                  static_cast<QWidget*>(chkVerify)})
        widget->setEnabled(!runs);
    tblDisplays->setTyping(!runs);
    btnStart->setEnabled(!runs && !rows_.isEmpty());
    btnCompare->setEnabled(!runs && !rows_.isEmpty());
    btnStop->setEnabled(runs);
    btnAgain->setEnabled(!runs && !rows_.failed().empty());
    btnReport->setEnabled(!runs && !rows_.results().empty());
}

} // namespace orvista
