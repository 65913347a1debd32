#include "check/forms/FindingsPanel.h"

#include "check/FileFindings.h"
#include "check/FindingList.h"
#include "check/forms/FixProgress.h"
#include "check/forms/frmFixes.h"
#include "items/forms/LabelCell.h"
#include "model/Place.h"
#include "widgets/FilterBox.h"
#include "widgets/FormParts.h"
#include "widgets/NotAppliedMark.h"
#include "widgets/RowsTable.h"
#include "widgets/SeenDelay.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QScopedValueRollback>
#include <QShortcut>
#include <QVBoxLayout>

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

/// A file is never shown with an edit that is not applied.
QString textOf(const Finding& finding, const std::vector<Item>& notApplied) {
    const QString text = QString::fromUtf8(finding.text);
    return finding.place.file.empty() ? text + notAppliedMark(notApplied, finding.place.item) : text;
}

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
    connect(tblFindings, &RowsTable::rowActivated, this, &FindingsPanel::goToFinding);
    connect(tblFindings, &RowsTable::rowLeft, this, &ProjectPanel::rowLeft);
    connect(tblFindings, &RowsTable::rowLeft, this, [this] {
        if (!isGoingOn_)
            emit noticeAsked({});
    });
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
    chkFindingsNotes->setToolTip(tr("Also show notes"));
    tblFindings->setAccessibleName(tr("Findings"));
    tblFindings->setContextMenuPolicy(Qt::CustomContextMenu);
    auto* const head = new QHBoxLayout;
    head->addWidget(lblFindings);
    head->addWidget(lblFindingsColumns);
    head->addStretch(1);
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

void FindingsPanel::check() {
    delay_->stop();
    const std::vector<Finding> selected = selectedFindings();
    findings_ = {};
    if (isEnabled()) {
        const Notes notes = chkFindingsNotes->isChecked() ? Notes::Included : Notes::LeftOut;
        findings_ = fileFindings(fileRemarks_);
        append(findings_, check_.check(project_, columns_, notes));
    }
    markNotApplied();
    select(selected);
    showSummary();
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

void FindingsPanel::follow() {
    delay_->start();
}

void FindingsPanel::markNotApplied() {
    const std::vector<Item> notApplied = notAppliedItems_();
    std::vector<TableRow> rows;
    for (const Finding& finding : findings_.list) {
        const Rule& rule = finding.rule();
        rows.push_back(
            {{QString::fromUtf8(severityName(finding.severity())), static_cast<int>(finding.severity())},
             {QString::fromStdString(nameOf(finding.place)), rankOf(finding.place)},
             labelCell(finding.place.file.empty() ? notes_->of(finding.place.item) : ItemNote()),
             {finding.place.line == 0 ? QString() : QString::number(finding.place.line),
              static_cast<qulonglong>(finding.place.line)},
             {.text = QString::fromUtf8(rule.name),
              .toolTip = explanations_[static_cast<std::size_t>(rule.code)]},
             {.text = rule.fixes == Fixes::None ? QString() : QStringLiteral("\u2022"),
              .toolTip = rule.fixes == Fixes::None ? QString() : tr("A fix is known: Alt+Enter makes it")},
             {textOf(finding, notApplied)}});
    }
    tblFindings->setRows(std::move(rows));
}

void FindingsPanel::showSummary() {
    QString summary = QString::fromUtf8(countsText(findings_.counts));
    if (findings_.notListed() > 0)
        summary += tr(", %1 of them not listed").arg(findings_.notListed());
    lblFindings->setText(summary.isEmpty() ? tr("No findings") : summary);
    lblFindingsColumns->setText(tr("for %1 columns").arg(columns_));
}

void FindingsPanel::goToFinding(int row) {
    const Place& place = findings_.list.at(static_cast<std::size_t>(row)).place;
    if (place.file.empty()) // a file has no page
        emit placeChosen({place.item, place.line});
}

void FindingsPanel::enter() {
    if (!tblFindings->currentIndex().isValid())
        tblFindings->selectRow(0);
    tblFindings->setFocus(Qt::ShortcutFocusReason);
}

void FindingsPanel::goOn(int step) {
    const QAbstractItemModel& shown = *tblFindings->model();
    const int count = shown.rowCount();
    if (count == 0)
        return emit noticeAsked(tr("No findings"));
    const QScopedValueRollback<bool> goingOn(isGoingOn_, true); // it leaves the row, too
    const QModelIndex current = tblFindings->currentIndex();
    const int before = current.isValid() ? current.row() : (step > 0 ? -1 : 0);
    tblFindings->selectRow((before + step + count) % count);
    const Finding& finding = *currentFinding();
    // The line may be needed to say why this is not the place to go to.
    emit noticeAsked(QString::fromStdString(nameOf(finding.place)) + QStringLiteral(": ") +
                     QString::fromStdString(finding.text));
    goToFinding(tblFindings->rowOf(tblFindings->currentIndex()));
}

const Finding* FindingsPanel::currentFinding() const {
    const int row = tblFindings->rowOf(tblFindings->currentIndex());
    return row < 0 ? nullptr : &findings_.list.at(static_cast<std::size_t>(row));
}

Fixing FindingsPanel::fixing() const {
    return {project_, check_.bitmaps(project_), columns_};
}

void FindingsPanel::make(const Fix& fix) {
    emit changesWanted(tr("Fix"), changesOf(project_, fix));
}

void FindingsPanel::fixCurrent() {
    check(); // what is shown may be of a moment ago
    const Finding* const finding = currentFinding();
    if (finding == nullptr)
        return;
    const std::vector<Fix> fixes = fixing().fixesOf(*finding);
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
    const std::vector<Fix> fixes = fixing().fixesOf(finding);
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
    frmFixes dialog({project_, check_.bitmaps(project_), columns_, setting_}, all, notAppliedItems_(),
                    window());
    dialog.exec();
    if (!dialog.IsCanceled)
        emit changesWanted(tr("Fix"), dialog.Fixed);
}

} // namespace orvista
