#include "check/forms/FindingsPanel.h"

#include "check/FileFindings.h"
#include "check/FindingList.h"
#include "check/forms/FixProgress.h"
#include "check/forms/frmFixes.h"
#include "items/forms/LabelCell.h"
#include "model/Place.h"
#include "widgets/FilterBox.h"
#include "widgets/FormParts.h"
#include "widgets/ModalDialogs.h"
#include "widgets/NotAppliedMark.h"
#include "widgets/SeenDelay.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QShortcut>
#include <QVBoxLayout>

#include <algorithm>
#include <chrono>

namespace orvista {

namespace {

QString explanationOf(const Rule& rule) {
    return "<p><b>" + QString::fromUtf8(rule.title).toHtmlEscaped() + "</b></p><p>" +
           QString::fromUtf8(rule.explanation).toHtmlEscaped() + "</p>";
}

/// In the order of the project, in which the list need not be: files, then items, by their lines.
qulonglong rankOf(const Place& place) {
    constexpr int bitsOfALine = 32;
    constexpr qulonglong itemsOfAKind = 256;
    const qulonglong item =
        place.file.empty() ? static_cast<qulonglong>(place.item.kind) * itemsOfAKind + place.item.index + 1
                           : 0;
    return (item << bitsOfALine) + place.line;
}

/// The check of all displays gives way to the user after this time; one display more may go beyond it.
constexpr std::chrono::milliseconds sliceTime{2};
/// So does the table that is filled with what was found.
constexpr std::size_t rowsOfASlice = 16;
/// In milliseconds.
constexpr int restUnderOthers = 300;

} // namespace

FindingsPanel::FindingsPanel(const Project& project, const FileRemarks& fileRemarks, FolderCheck& check,
                             int columns, std::function<std::vector<Item>()> notAppliedItems,
                             PreviewSettingSource setting)
    : project_(project),
      fileRemarks_(fileRemarks),
      check_(check),
      notAppliedItems_(std::move(notAppliedItems)),
      setting_(std::move(setting)),
      columns_(columns),
      delay_(new SeenDelay(*this, [this] { this->check(); })),
      txtFindingsFilter(named<FilterBox>(QStringLiteral("txtFindingsFilter"))),
      chkFindingsAllDisplays(named<QCheckBox>(QStringLiteral("chkFindingsAllDisplays"), tr("All &Displays"))),
      chkFindingsNotes(named<QCheckBox>(QStringLiteral("chkFindingsNotes"), tr("&Notes"))),
      lblFindings(named<QLabel>(QStringLiteral("lblFindings"))),
      lblFindingsColumns(named<QLabel>(QStringLiteral("lblFindingsColumns"))),
      tblFindings(named<RowsTable>(QStringLiteral("tblFindings"),
                                   QStringList{tr("Severity"), tr("Item"), tr("Label"), tr("Line"),
                                               tr("Code"), tr("Fix"), tr("Finding")})) {
    buildLayout();
    for (const Rule& rule : rules())
        explanations_.push_back(explanationOf(rule));
    connect(txtFindingsFilter, &QLineEdit::textChanged, tblFindings, &RowsTable::setFilter);
    connect(chkFindingsNotes, &QCheckBox::toggled, this, &FindingsPanel::check);
    connect(chkFindingsAllDisplays, &QCheckBox::toggled, this, &FindingsPanel::check);
    slices_.setSingleShot(true);
    connect(&slices_, &QTimer::timeout, this, &FindingsPanel::checkOn);
    connect(tblFindings, &RowsTable::rowActivated, this, &FindingsPanel::goToFinding);
    connect(tblFindings, &RowsTable::rowLeft, this, &ProjectPanel::rowLeft);
    connect(tblFindings, &RowsTable::rowLeft, this, [this] { emit noticeAsked({}); });
    connect(tblFindings->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this] { ahead_ = 0; });
    connect(tblFindings, &QWidget::customContextMenuRequested, this, &FindingsPanel::showMenu);
    for (const int key : {Qt::Key_Return, Qt::Key_Enter}) {
        auto* const fix = new QShortcut(QKeySequence(Qt::ALT | static_cast<Qt::Key>(key)), tblFindings);
        fix->setContext(Qt::WidgetShortcut);
        connect(fix, &QShortcut::activated, this, &FindingsPanel::fixCurrent);
    }
}

void FindingsPanel::buildLayout() {
    txtFindingsFilter->passFocusTo(*tblFindings);
    txtFindingsFilter->setAccessibleName(tr("Filter the findings"));
    txtFindingsFilter->setToolTip(tr("Show only findings with this text"));
    chkFindingsAllDisplays->setToolTip(
        tr("What is found with the values of each display of the list; the same of several is one row"));
    chkFindingsAllDisplays->hide();
    chkFindingsNotes->setToolTip(tr("Also show notes"));
    tblFindings->setAccessibleName(tr("Findings"));
    tblFindings->setContextMenuPolicy(Qt::CustomContextMenu);
    auto* const head = new QHBoxLayout;
    head->addWidget(lblFindings);
    head->addWidget(lblFindingsColumns);
    head->addStretch(1);
    head->addWidget(chkFindingsAllDisplays);
    head->addWidget(chkFindingsNotes);
    head->addWidget(txtFindingsFilter, 1);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, layout->spacing(), 0, 0);
    layout->addLayout(head);
    layout->addWidget(tblFindings, 1);
}

void FindingsPanel::setColumns(int columns) {
    columns_ = columns;
    follow();
}

void FindingsPanel::useMaster(const MasterView& view) {
    master_ = &view;
}

void FindingsPanel::check() {
    delay_->stop();
    slices_.stop();
    chkFindingsAllDisplays->setVisible(isOfMaster());
    if (isEnabled() && isOfMaster() && chkFindingsAllDisplays->isChecked()) {
        const Notes notes = chkFindingsNotes->isChecked() ? Notes::Included : Notes::LeftOut;
        // What was found before stays on the screen until this is done.
        auto next = std::make_unique<AllDisplaysCheck>(master_->master(), master_->sharedDisplays(),
                                                       check_.bitmaps(project_), columns_, notes);
        next_ = std::move(next);
        slices_.start(0);
        return showSummary();
    }
    next_.reset();
    allDisplays_.reset();
    take(isEnabled() ? checkShown() : Findings());
}

Findings FindingsPanel::checkShown() {
    const Notes notes = chkFindingsNotes->isChecked() ? Notes::Included : Notes::LeftOut;
    Findings findings = fileFindings(fileRemarks_);
    append(findings, master_ != nullptr ? check_.check(*master_, columns_, notes)
                                        : check_.check(project_, columns_, notes));
    return findings;
}

void FindingsPanel::checkOn() {
    if (!isVisible()) // coming to the screen starts again
        return;
    if (isModalDialogOpen())
        return slices_.start(restUnderOthers);
    if (next_)
        checkNext();
    else
        fillOn();
    if (isChecking())
        slices_.start(0);
    showSummary();
}

void FindingsPanel::checkNext() {
    const auto begin = std::chrono::steady_clock::now();
    while (!next_->isDone() && std::chrono::steady_clock::now() - begin < sliceTime)
        next_->goOn();
    if (!next_->isDone())
        return;
    allDisplays_ = std::move(next_);
    Findings findings = fileFindings(fileRemarks_);
    append(findings, allDisplays_->findings());
    beginFilling(std::move(findings));
}

void FindingsPanel::beginFilling(Findings findings) {
    before_ = chosen();
    findings_ = std::move(findings);
    filled_ = 0;
    tblFindings->keepRows(findings_.list.size());
}

void FindingsPanel::fillOn() {
    const std::vector<Item> notApplied = notAppliedItems_();
    const std::size_t end = std::min(filled_ + rowsOfASlice, findings_.list.size());
    std::vector<TableRow> rows;
    for (std::size_t i = filled_; i < end; ++i)
        rows.push_back(rowOf(findings_.list[i], notApplied));
    tblFindings->putRows(filled_, std::move(rows));
    filled_ = end;
    if (!isFilling())
        choose(before_);
}

void FindingsPanel::take(Findings findings) {
    const Chosen before = chosen();
    findings_ = std::move(findings);
    markNotApplied();
    choose(before);
    showSummary();
}

FindingsPanel::Chosen FindingsPanel::chosen() const {
    if (isFilling())
        return before_;
    const Finding* const current = currentFinding();
    return {selectedFindings(), current != nullptr ? std::optional(*current) : std::nullopt,
            tblFindings->currentIndex().row(), ahead_};
}

void FindingsPanel::choose(const Chosen& before) {
    select(before.selected);
    if (before.current && sameFinding(findings_.list, *before.current) == nullptr)
        ahead_ = before.row < tblFindings->model()->rowCount() ? 1 : -1;
    else
        ahead_ = before.ahead; // whatever became of its row
}

std::vector<Finding> FindingsPanel::selectedFindings() const {
    std::vector<Finding> selected;
    const int current = tblFindings->rowOf(tblFindings->currentIndex());
    for (const int row : tblFindings->selectedRows()) {
        const Finding& finding = findings_.list.at(static_cast<std::size_t>(row));
        selected.insert(row == current ? selected.begin() : selected.end(), finding);
    }
    return selected;
}

void FindingsPanel::select(const std::vector<Finding>& earlier) {
    std::vector<int> rows;
    for (const Finding& finding : earlier)
        if (const Finding* const same = sameFinding(findings_.list, finding))
            rows.push_back(static_cast<int>(same - findings_.list.data()));
    tblFindings->selectRows(rows);
}

QString FindingsPanel::textOf(const Finding& finding, const std::vector<Item>& notApplied) const {
    QString text = QString::fromUtf8(finding.text);
    if (allDisplays_)
        if (const std::string displays = allDisplays_->displaysText(finding); !displays.empty())
            text = QString::fromStdString(displays) + QStringLiteral(": ") + text;
    // A file is never shown with an edit that is not applied.
    return finding.place.file.empty() ? text + notAppliedMark(notApplied, finding.place.item) : text;
}

void FindingsPanel::follow() {
    delay_->start();
}

TableRow FindingsPanel::rowOf(const Finding& finding, const std::vector<Item>& notApplied) const {
    const Rule& rule = finding.rule();
    return {
        {QString::fromUtf8(severityName(finding.severity())), static_cast<int>(finding.severity())},
        {QString::fromStdString(nameOf(finding.place)), rankOf(finding.place)},
        labelCell(finding.place.file.empty() ? notes_->of(finding.place.item) : ItemNote()),
        {finding.place.line == 0 ? QString() : QString::number(finding.place.line),
         static_cast<qulonglong>(finding.place.line)},
        {.text = QString::fromUtf8(rule.name), .toolTip = explanations_[static_cast<std::size_t>(rule.code)]},
        {.text = rule.fixes == Fixes::None ? QString() : QStringLiteral("\u2022"),
         .toolTip = rule.fixes == Fixes::None ? QString() : tr("A fix is known: Alt+Enter makes it")},
        {textOf(finding, notApplied)}};
}

void FindingsPanel::markNotApplied() {
    const std::vector<Item> notApplied = notAppliedItems_();
    std::vector<TableRow> rows;
    for (const Finding& finding : findings_.list)
        rows.push_back(rowOf(finding, notApplied));
    tblFindings->setRows(std::move(rows));
    filled_ = findings_.list.size();
}

void FindingsPanel::showSummary() {
    QString summary = QString::fromUtf8(countsText(findings_.counts));
    if (findings_.notListed() > 0)
        summary += tr(", %1 of them not listed").arg(findings_.notListed());
    if (summary.isEmpty())
        summary = tr("No findings");
    if (next_)
        summary += tr(" (%1 of %2 displays checked)").arg(next_->checkedCount()).arg(next_->count());
    lblFindings->setText(summary);
    lblFindingsColumns->setText(tr("for %1 columns").arg(columns_));
}

void FindingsPanel::goToFinding(int row) {
    const Finding* const finding = findingAt(row);
    if (finding != nullptr && finding->place.file.empty()) // a file has no page
        emit placeChosen({finding->place.item, finding->place.line});
}

void FindingsPanel::enter() {
    if (!tblFindings->currentIndex().isValid())
        tblFindings->selectRow(0);
    tblFindings->setFocus(Qt::ShortcutFocusReason);
}

QString FindingsPanel::goOn(int step) {
    const int count = tblFindings->model()->rowCount();
    if (count == 0)
        return findings_.list.empty() ? tr("No findings") : tr("No finding has the text of the filter");
    const int current = tblFindings->currentIndex().row();
    if (current < 0)
        tblFindings->selectRow(step > 0 ? 0 : count - 1);
    else if (step != ahead_)
        tblFindings->selectRow((current + step + count) % count);
    ahead_ = 0;
    const Finding* const finding = currentFinding();
    if (finding == nullptr)
        return {};
    const QString sentence = QString::fromStdString(nameOf(finding->place)) + QStringLiteral(": ") +
                             QString::fromStdString(finding->text);
    goToFinding(tblFindings->rowOf(tblFindings->currentIndex()));
    return sentence;
}

const Finding* FindingsPanel::findingAt(int row) const {
    const bool isShown = row >= 0 && static_cast<std::size_t>(row) < filled_;
    return isShown ? &findings_.list.at(static_cast<std::size_t>(row)) : nullptr;
}

const Finding* FindingsPanel::currentFinding() const {
    return findingAt(tblFindings->rowOf(tblFindings->currentIndex()));
}

Fixing FindingsPanel::fixing() const {
    return {shown(), check_.bitmaps(project_), columns_, keptItems()};
}

std::vector<Item> FindingsPanel::keptItems() const {
    return isOfMaster() ? master_->master()->items() : std::vector<Item>();
}

std::vector<Fix> FindingsPanel::fixesOf(const Finding& finding) const {
    Fixing fixing = this->fixing();
    // The check of all displays may not have come round to what is in the item now.
    const Finding* const now = sameFinding(fixing.findingsOf(finding.place.item), finding);
    return now ? fixing.fixesOf(Finding(*now)) : std::vector<Fix>();
}

void FindingsPanel::make(const Fix& fix) {
    emit changesWanted(tr("Fix"), changesOf(project_, fix));
}

void FindingsPanel::fixCurrent() {
    check(); // what is shown may be of a moment ago
    const Finding* const finding = currentFinding();
    if (finding == nullptr)
        return;
    const std::vector<Fix> fixes = fixesOf(*finding);
    if (fixes.empty())
        return emit noticeAsked(
            tr("No fix is known that mends this finding and leaves the others as they are"));
    make(fixes.front());
}

void FindingsPanel::showMenu(const QPoint& place) {
    check();
    QMenu menu;
    menu.setObjectName(QStringLiteral("mnuFindings"));
    const Finding* const current = currentFinding();
    if (current == nullptr)
        return;
    const Finding finding = *current;
    const std::vector<Fix> fixes = fixesOf(finding);
    for (const Fix& fix : fixes)
        menu.addAction(
            tr("Fix: %1").arg(
                QString::fromStdString(fix.caption).replace(QStringLiteral("&"), QStringLiteral("&&"))),
            this, [this, &fix] { make(fix); });
    if (!fixes.empty())
        menu.actions().front()->setShortcut(QKeySequence(Qt::ALT | Qt::Key_Return));
    menu.addSeparator();
    QAction* const ofThisKind = menu.addAction(tr("Fix All of This &Kind\u2026"), this, [this, finding] {
        fixAll({{finding.code}, {}});
    });
    ofThisKind->setEnabled(finding.rule().fixes != Fixes::None);
    menu.addAction(tr("Fix &All\u2026"), this, [this] { fixAll({}); });
    menu.exec(tblFindings->viewport()->mapToGlobal(place));
}

void FindingsPanel::fixAll(const FixChoice& choice) {
    Fixing run = fixing();
    FixProgress progress(*this);
    const auto all = choice.codes.empty() ? mendEverything(run, progress.goesOn())
                                          : mendAll(run, choice, progress.goesOn());
    const bool isStopped = progress.wasCanceled();
    progress.reset();
    if (isStopped)
        return;
    if (all.empty())
        return emit noticeAsked(
            tr("No fix is known that mends one of these findings and leaves the others as they are"));
    frmFixes dialog({shown(), check_.bitmaps(project_), columns_, setting_, keptItems()}, all,
                    notAppliedItems_(), window());
    dialog.exec();
    if (!dialog.IsCanceled)
        emit changesWanted(tr("Fix"), dialog.Fixed);
}

} // namespace orvista
