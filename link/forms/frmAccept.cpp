#include "link/forms/frmAccept.h"

#include "display/FieldValues.h"
#include "items/AcceptanceFile.h"
#include "items/MessageDigest.h"
#include "items/NotesFile.h"
#include "link/forms/AcceptSentences.h"
#include "link/forms/DisplayAcceptance.h"
#include "link/forms/ExpectedMessage.h"
#include "model/FileNames.h"
#include "model/FileReplacing.h"
#include "model/People.h"
#include "model/Text.h"
#include "model/UtcTime.h"
#include "widgets/FileChoice.h"
#include "widgets/FormParts.h"
#include "widgets/PathText.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSplitter>
#include <QVBoxLayout>

#include <algorithm>
#include <bit>
#include <system_error>
#include <utility>

namespace orvista {

namespace {

HeldWords wordsOf(float value) {
    const auto bits = std::bit_cast<std::uint32_t>(value);
    return {static_cast<std::uint16_t>(bits & 0xFFFF), static_cast<std::uint16_t>(bits >> 16)};
}

VariableUse variablesOf(const Project& project, Item message) {
    return messageDigest(scriptOf(project, message), fieldFormats(project)).variables;
}

/// Of the variables that the message shows.
std::map<Item, HeldWords> widestWords(const Project& project, Item message) {
    const DisplayValues widest = chosenValues(ValueChoice::Widest, project).values;
    const VariableUse shown = variablesOf(project, message);
    std::map<Item, HeldWords> words;
    for (std::size_t index = 0; index < shown.floats.size(); ++index)
        if (shown.floats[index])
            words[{Kind::Float, index}] = wordsOf(widest.floats[index]);
    for (std::size_t index = 0; index < shown.booleans.size(); ++index)
        if (shown.booleans[index])
            words[{Kind::Boolean, index}] = {static_cast<std::uint16_t>(widest.booleans[index] ? 1 : 0), 0};
    return words;
}

/// As the file takes it.
std::string lineOf(const QLineEdit& box) {
    return withoutControlCharacters(box.text().trimmed().toStdString());
}

} // namespace

frmAccept::frmAccept(Work work, QWidget* parent)
    : QDialog(parent),
      work_(std::move(work)),
      table_(work_.accepted),
      expected_(
          new ExpectedMessage(work_.accepted.project, work_.accepted.columns, work_.accepted.localTime)),
      lblAcceptWarning(named<QLabel>(QStringLiteral("lblAcceptWarning"),
                                     tr("While this runs, messages of this display are switched. A PLC that "
                                        "writes the same coils will interfere."))),
      lblAcceptState(named<QLabel>(QStringLiteral("lblAcceptState"))),
      txtAcceptName(named<QLineEdit>(QStringLiteral("txtAcceptName"))),
      txtAcceptRemark(named<QLineEdit>(QStringLiteral("txtAcceptRemark"))) {
    setObjectName(QStringLiteral("frmAccept"));
    setWindowTitle(tr("Accept at the Display"));
    buildLayout();
    connect(table_.widget(), &RowsTable::ticksChanged, this, &frmAccept::follow);
    follow();
}

frmAccept::~frmAccept() {
    if (run_)
        run_->disconnect(this);
}

QPushButton* frmAccept::button(const char* name, const QString& caption, const QString& toolTip,
                               void (frmAccept::*click)()) {
    QPushButton* const made = namedButton(QString::fromLatin1(name), caption, this);
    made->setToolTip(toolTip);
    connect(made, &QPushButton::clicked, this, click);
    return made;
}

QBoxLayout* frmAccept::buildHead() {
    lblAcceptWarning->setWordWrap(true);
    txtAcceptName->setToolTip(tr("Who looks at the display; it stands in the result"));
    txtAcceptName->setMaxLength(static_cast<int>(longestRemark));
    btnAcceptStart = button("btnAcceptStart", tr("S&tart…"),
                            tr("Choose the result's file, then switch the first ticked message on that was "
                               "not seen yet"),
                            &frmAccept::btnAcceptStart_Click);
    auto* const row = new QHBoxLayout;
    row->addWidget(labelFor(txtAcceptName, tr("Your name:")));
    row->addWidget(txtAcceptName, 1);
    row->addWidget(btnAcceptStart);
    return row;
}

QBoxLayout* frmAccept::buildAnswers() {
    using Form = frmAccept;
    txtAcceptRemark->setToolTip(tr("What is to be said of the message; it stands in the result"));
    txtAcceptRemark->setMaxLength(static_cast<int>(longestRemark));
    btnAcceptGood = button("btnAcceptGood", tr("As S&hown"),
                           tr("The display shows it so; on to the next message"), &Form::btnAcceptGood_Click);
    btnAcceptBad =
        button("btnAcceptBad", tr("&Wrong"), tr("The display shows something else; on to the next message"),
               &Form::btnAcceptBad_Click);
    btnAcceptSkip = button("btnAcceptSkip", tr("S&kip"), tr("On to the next message without an answer"),
                           &Form::btnAcceptSkip_Click);
    btnAcceptBack = button("btnAcceptBack", tr("&Back"), tr("Show the message before this one again"),
                           &Form::btnAcceptBack_Click);
    btnAcceptWidest =
        button("btnAcceptWidest", tr("Wi&dest Values"),
               tr("Write the widest values to this message's variables; they are put back before "
                  "the next message"),
               &Form::btnAcceptWidest_Click);
    auto* const remark = new QHBoxLayout;
    remark->addWidget(labelFor(txtAcceptRemark, tr("Remark:")));
    remark->addWidget(txtAcceptRemark, 1);
    auto* const buttons = new QHBoxLayout;
    for (QPushButton* const widget :
         {btnAcceptGood, btnAcceptBad, btnAcceptSkip, btnAcceptBack, btnAcceptWidest})
        buttons->addWidget(widget);
    auto* const rows = new QVBoxLayout;
    rows->addLayout(remark);
    rows->addLayout(buttons);
    return rows;
}

QBoxLayout* frmAccept::buildEnd() {
    btnAcceptStop = button("btnAcceptStop", tr("Sto&p"), tr("Put back what was there before"),
                           &frmAccept::btnAcceptStop_Click);
    btnCancel =
        button("btnCancel", tr("Close"), tr("Put back what was there before, and close"), &frmAccept::reject);
    lblAcceptState->setTextFormat(Qt::PlainText);
    lblAcceptState->setWordWrap(true);
    auto* const row = new QHBoxLayout;
    row->addWidget(lblAcceptState, 1);
    row->addWidget(btnAcceptStop);
    row->addWidget(btnCancel);
    return row;
}

void frmAccept::buildLayout() {
    // No wider, that large letters leave the picture beside it as large as those in its rows.
    makeRoom(table_.widget(), {.characters = 36, .lines = 10});
    auto* const views = new QSplitter;
    views->setChildrenCollapsible(false);
    views->addWidget(table_.widget());
    views->addWidget(expected_);
    views->setStretchFactor(0, 3);
    views->setStretchFactor(1, 2);
    views->setSizes({300, 200});
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(lblAcceptWarning);
    layout->addLayout(buildHead());
    layout->addWidget(views, 1);
    layout->addLayout(buildAnswers());
    layout->addLayout(buildEnd());
    resizeWithinScreen(*this, {180 * fontMetrics().averageCharWidth(), 26 * fontMetrics().lineSpacing()});
    btnAcceptStart->setDefault(true);
    txtAcceptName->setFocus();
}

bool frmAccept::isRunning() const {
    return run_ && !run_->run().isOver();
}

bool frmAccept::keep(const AcceptanceRun& run) const {
    return work_.keep({work_.address, run.before(), run.written()});
}

void frmAccept::btnAcceptStart_Click() {
    const Project& project = work_.accepted.project;
    const auto file = chooseFileToWrite({tr("Result of the Acceptance"),
                                         {tr("Result (*.json)")},
                                         project.ProjPath,
                                         QString::fromStdString(acceptanceFileName(project.ProjName))},
                                        this);
    if (!file)
        return;
    std::string fault = faultOfName(file->path);
    if (fault.empty())
        fault = work_.claim();
    if (!fault.empty())
        return work_.messages.show(MessageIcon::Exclamation, fault);
    beginResult(file->path);
    if (!writeFault_.isEmpty())
        return work_.messages.show(MessageIcon::Exclamation, writeFault_.toStdString());
    delete run_;
    run_ = new DisplayAcceptance(
        work_.address, work_.port,
        AcceptanceRun(displayItems(project), [this](const AcceptanceRun& run) { return keep(run); }), this);
    connect(run_, &DisplayAcceptance::changed, this, &frmAccept::follow);
    connect(run_, &DisplayAcceptance::over, this, &frmAccept::finish, Qt::QueuedConnection);
    goTo(firstToShow());
}

/// Why the result does not go there: nothing else of the project may be lost.
std::string frmAccept::faultOfName(const std::string& path) const {
    if (!endsWithIgnoringCase(path, ".json"))
        return path + " does not end in .json";
    return path == notesPath(work_.accepted.project) ? path + " holds the project's names" : std::string();
}

/// What was said before a run broke off stays, as long as it has no other file.
void frmAccept::beginResult(const std::string& path) {
    if (std::exchange(path_, path) != path && writeFault_.isEmpty())
        acceptance_ = {work_.fingerprint, work_.address, utcText(presentMoment()), {}, {}};
    acceptance_.name = lineOf(*txtAcceptName);
    write();
}

/// The first ticked message of which nothing was said yet; the first one where something was said of each.
Item frmAccept::firstToShow() const {
    const std::vector<Item> ticked = table_.ticked();
    const auto found =
        std::ranges::find_if(ticked, [this](Item message) { return acceptance_.of(message) == nullptr; });
    return found == ticked.end() ? ticked.front() : *found;
}

void frmAccept::write() {
    try {
        replaceFile(path_, acceptanceBytes(acceptance_));
        writeFault_.clear();
    } catch (const std::system_error& failure) {
        writeFault_ = tr("%1 cannot be written: %2")
                          .arg(shownPath(path_), QString::fromStdString(failure.code().message()));
    }
}

void frmAccept::goTo(std::optional<Item> message) {
    at_ = message;
    isWidest_ = false;
    txtAcceptRemark->clear();
    table_.show(acceptance_, at_);
    if (message)
        run_->show(*message);
    else
        run_->end();
    wantsFocus_ = message.has_value();
}

/// The ticked message that comes this many rows after the shown one; nothing where there is none.
std::optional<Item> frmAccept::beside(int step) const {
    const std::vector<Item> ticked = table_.ticked();
    const auto position = [](Item message) { return messagePosition(message); };
    if (step > 0) {
        const auto next = std::ranges::upper_bound(ticked, position(*at_), {}, position);
        return next == ticked.end() ? std::nullopt : std::optional(*next);
    }
    const auto same = std::ranges::lower_bound(ticked, position(*at_), {}, position);
    return same == ticked.begin() ? std::nullopt : std::optional(*std::prev(same));
}

void frmAccept::say(SeenResult result) {
    acceptance_.set({*at_, result, lineOf(*txtAcceptRemark), utcText(presentMoment())});
    write();
    goTo(beside(1));
}

void frmAccept::btnAcceptBack_Click() {
    goTo(beside(-1));
}

void frmAccept::btnAcceptWidest_Click() {
    isWidest_ = true;
    run_->write(widestWords(work_.accepted.project, *at_));
    wantsFocus_ = true;
}

void frmAccept::btnAcceptStop_Click() {
    run_->end();
}

void frmAccept::reject() {
    if (!isRunning()) {
        if (mayClose())
            QDialog::reject();
        return;
    }
    wantsClose_ = true;
    run_->end();
}

/// Asks where what was said would be lost.
bool frmAccept::mayClose() {
    if (writeFault_.isEmpty() || acceptance_.messages.empty())
        return true;
    write();
    follow();
    return writeFault_.isEmpty() ||
           work_.messages.askYesNo((writeFault_ + tr(". Close, and lose what was said?")).toStdString());
}

void frmAccept::follow() {
    if (run_)
        expected_->setHeld(run_->run().items());
    const bool isShown =
        isRunning() && run_->run().shown() && run_->run().state() != AcceptanceRun::State::PuttingBack;
    expected_->show(
        isShown ? run_->run().shown() : std::nullopt,
        isShown ? tr("The display should show %1:").arg(QString::fromStdString(nameOf(*run_->run().shown())))
                : tr("The display should show:"));
    lblAcceptState->setText(stateText());
    enableButtons();
}

/// Everything is put back, or as much as could be.
void frmAccept::finish() {
    NotPutBack = run_->run().written();
    if (!writeFault_.isEmpty())
        write();
    at_.reset();
    table_.show(acceptance_, std::nullopt);
    follow();
    if (!std::exchange(wantsClose_, false))
        return btnCancel->setFocus();
    if (!run_->run().reason().empty() || !NotPutBack.empty())
        work_.messages.show(MessageIcon::Exclamation, stateText().toStdString());
    reject();
}

QString frmAccept::stateText() const {
    if (!run_)
        return tr("%n message(s) are ticked.", nullptr, static_cast<int>(table_.ticked().size()));
    const QString state = acceptanceState(run_->run(), QString::fromStdString(work_.address));
    QStringList parts{state};
    if (run_->run().isOver())
        parts.prepend(countsText(acceptance_));
    if (!NotPutBack.empty())
        parts << tr("Close: it is offered to be put back.");
    if (!writeFault_.isEmpty())
        parts << writeFault_ + u'.';
    parts.removeAll(QString());
    return parts.join(u' ');
}

void frmAccept::enableButtons() {
    const bool runs = isRunning();
    const bool waits = runs && run_->run().state() == AcceptanceRun::State::Waiting && at_;
    txtAcceptName->setEnabled(!runs);
    // A box that is disabled while its window is not active would show a cursor still.
    txtAcceptName->setReadOnly(runs);
    // A second run would take for what was there before what the first one has left.
    btnAcceptStart->setEnabled(!runs && NotPutBack.empty() && !table_.ticked().empty());
    for (QWidget* const widget :
         {static_cast<QWidget*>(btnAcceptGood), static_cast<QWidget*>(btnAcceptBad),
          static_cast<QWidget*>(btnAcceptSkip), static_cast<QWidget*>(txtAcceptRemark)})
        widget->setEnabled(waits);
    btnAcceptBack->setEnabled(waits && beside(-1));
    btnAcceptWidest->setEnabled(waits && !isWidest_ && hasVariables(*at_));
    btnAcceptStop->setEnabled(runs && run_->run().state() != AcceptanceRun::State::PuttingBack);
    // What was disabled while the display was asked has lost the keyboard.
    if (waits && std::exchange(wantsFocus_, false))
        btnAcceptGood->setFocus();
}

bool frmAccept::hasVariables(Item message) const {
    const VariableUse use = variablesOf(work_.accepted.project, message);
    return use.floats.any() || use.booleans.any();
}

} // namespace orvista
