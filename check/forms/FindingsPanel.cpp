#include "check/forms/FindingsPanel.h"

#include "check/FileFindings.h"
#include "check/FindingList.h"
#include "model/Place.h"
#include "widgets/FilterBox.h"
#include "widgets/FormParts.h"
#include "widgets/NotAppliedMark.h"
#include "widgets/RowsTable.h"
#include "widgets/SeenDelay.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace orvista {

namespace {

QString explanationOf(const Rule& rule) {
    return "<p><b>" + QString::fromUtf8(rule.title).toHtmlEscaped() + "</b></p><p>" +
           QString::fromUtf8(rule.explanation).toHtmlEscaped() + "</p>";
}

/// A file is never shown with an edit that is not applied.
QString textOf(const Finding& finding, const std::vector<Item>& notApplied) {
    const QString text = QString::fromUtf8(finding.text);
    return finding.place.file.empty() ? text + notAppliedMark(notApplied, finding.place.item) : text;
}

} // namespace

FindingsPanel::FindingsPanel(const Project& project, const FileRemarks& fileRemarks, FolderCheck& check,
                             int columns, std::function<std::vector<Item>()> notAppliedItems)
    : project_(project),
      fileRemarks_(fileRemarks),
      check_(check),
      notAppliedItems_(std::move(notAppliedItems)),
      columns_(columns),
      delay_(new SeenDelay(*this, [this] { this->check(); })),
      txtFindingsFilter(named<FilterBox>(QStringLiteral("txtFindingsFilter"))),
      chkFindingsNotes(named<QCheckBox>(QStringLiteral("chkFindingsNotes"), tr("&Notes"))),
      lblFindings(named<QLabel>(QStringLiteral("lblFindings"))),
      lblFindingsColumns(named<QLabel>(QStringLiteral("lblFindingsColumns"))),
      tblFindings(
          named<RowsTable>(QStringLiteral("tblFindings"),
                           QStringList{tr("Severity"), tr("Item"), tr("Line"), tr("Code"), tr("Finding")})) {
    buildLayout();
    for (const Rule& rule : rules())
        explanations_.push_back(explanationOf(rule));
    connect(txtFindingsFilter, &QLineEdit::textChanged, tblFindings, &RowsTable::setFilter);
    connect(chkFindingsNotes, &QCheckBox::toggled, this, &FindingsPanel::check);
    connect(tblFindings, &RowsTable::rowActivated, this, &FindingsPanel::leadToFinding);
    connect(tblFindings, &RowsTable::rowLeft, this, &ProjectPanel::rowLeft);
}

void FindingsPanel::buildLayout() {
    txtFindingsFilter->leadTo(*tblFindings);
    txtFindingsFilter->setAccessibleName(tr("Filter the findings"));
    txtFindingsFilter->setToolTip(tr("Show only findings with this text"));
    chkFindingsNotes->setToolTip(tr("Also show notes"));
    tblFindings->setAccessibleName(tr("Findings"));
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
        if (const Finding* const same = sameFinding(findings_, finding))
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
             // The check names the items in their order.
             {QString::fromStdString(nameOf(finding.place)), static_cast<int>(rows.size())},
             {finding.place.line == 0 ? QString() : QString::number(finding.place.line),
              static_cast<qulonglong>(finding.place.line)},
             {.text = QString::fromUtf8(rule.name),
              .toolTip = explanations_[static_cast<std::size_t>(rule.code)]},
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

void FindingsPanel::leadToFinding(int row) {
    const Place& place = findings_.list.at(static_cast<std::size_t>(row)).place;
    if (place.file.empty()) // a file has no page
        emit placeChosen({place.item, place.line});
}

} // namespace orvista
