#include "check/forms/FindingsPanel.h"

#include "widgets/FormParts.h"
#include "widgets/ModalDialogs.h"
#include "widgets/RowsTable.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>
#include <chrono>

namespace orvista {

namespace {

constexpr std::chrono::milliseconds checkDelay{300};

QString shown(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// "1 error", "2 errors"; nothing for none.
void addCount(QStringList& parts, std::size_t count, const QString& one, const QString& several) {
    if (count > 0)
        parts << QStringLiteral("%1 %2").arg(count).arg(count == 1 ? one : several);
}

} // namespace

FindingsPanel::FindingsPanel(const Project& project, int columns,
                             std::function<std::vector<std::string>()> notAppliedItems)
    : project_(project),
      notAppliedItems_(std::move(notAppliedItems)),
      columns_(columns),
      delay_(new QTimer(this)),
      txtFindingsFilter(named<QLineEdit>(QStringLiteral("txtFindingsFilter"))),
      chkFindingsNotes(named<QCheckBox>(QStringLiteral("chkFindingsNotes"), tr("&Notes"))),
      lblFindings(named<QLabel>(QStringLiteral("lblFindings"))),
      lblFindingsColumns(named<QLabel>(QStringLiteral("lblFindingsColumns"))),
      tblFindings(
          named<RowsTable>(QStringLiteral("tblFindings"),
                           QStringList{tr("Severity"), tr("Item"), tr("Line"), tr("Code"), tr("Finding")})) {
    buildLayout();
    delay_->setSingleShot(true);
    delay_->setInterval(checkDelay);
    connect(delay_, &QTimer::timeout, this, &FindingsPanel::checkIfSeen);
    connect(txtFindingsFilter, &QLineEdit::textChanged, tblFindings, &RowsTable::setFilter);
    connect(chkFindingsNotes, &QCheckBox::toggled, this, &FindingsPanel::check);
    connect(tblFindings, &RowsTable::rowActivated, this, &FindingsPanel::leadToFinding);
    connect(tblFindings, &RowsTable::rowLeft, this, &FindingsPanel::rowLeft);
}

void FindingsPanel::buildLayout() {
    txtFindingsFilter->setPlaceholderText(tr("Filter"));
    txtFindingsFilter->setAccessibleName(tr("Filter the findings"));
    txtFindingsFilter->setClearButtonEnabled(true);
    txtFindingsFilter->setToolTip(tr("Show only findings with this text"));
    chkFindingsNotes->setToolTip(tr("Show also what is only worth a look"));
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
    checkSoon();
}

void FindingsPanel::check() {
    delay_->stop();
    findings_ = {};
    if (isEnabled()) {
        const BitmapProvider& images = bitmaps();
        const Notes notes = chkFindingsNotes->isChecked() ? Notes::Included : Notes::LeftOut;
        findings_ = check_.check(project_, images, columns_, notes);
    }
    markNotApplied();
    showSummary();
}

void FindingsPanel::checkSoon() {
    delay_->start();
}

void FindingsPanel::checkIfSeen() {
    if (isModalDialogOpen())
        delay_->start();
    else if (isVisible())
        check();
}

void FindingsPanel::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    checkSoon();
}

void FindingsPanel::markNotApplied() {
    const std::vector<std::string> notApplied = notAppliedItems_();
    std::vector<TableRow> rows;
    for (const Finding& finding : findings_.list) {
        const bool marked = std::find(notApplied.begin(), notApplied.end(), finding.item) != notApplied.end();
        rows.push_back({{shown(severityName(finding.severity)), static_cast<int>(finding.severity)},
                        // The check names the items in their order.
                        {shown(finding.item), static_cast<int>(rows.size())},
                        {finding.line == 0 ? QString() : QString::number(finding.line),
                         static_cast<qulonglong>(finding.line)},
                        {shown(finding.code)},
                        {shown(finding.text) + (marked ? tr(" (not applied)") : QString())}});
    }
    tblFindings->setRows(std::move(rows));
}

void FindingsPanel::showSummary() {
    QStringList parts;
    addCount(parts, findings_.errors, tr("error"), tr("errors"));
    addCount(parts, findings_.warnings, tr("warning"), tr("warnings"));
    addCount(parts, findings_.notes, tr("note"), tr("notes"));
    if (findings_.notListed() > 0)
        parts << tr("%1 of them not listed").arg(findings_.notListed());
    lblFindings->setText(parts.isEmpty() ? tr("No findings") : parts.join(QStringLiteral(", ")));
    lblFindingsColumns->setText(tr("for %1 columns").arg(columns_));
}

const BitmapProvider& FindingsPanel::bitmaps() {
    if (!bitmaps_ || bitmapFolder_ != project_.ProjPath) {
        bitmapFolder_ = project_.ProjPath;
        bitmaps_.emplace(bitmapFolder_);
        check_ = ProjectCheck(); // it remembers the folder's images
    }
    return *bitmaps_;
}

void FindingsPanel::leadToFinding(int row) {
    const Finding& finding = findings_.list.at(static_cast<std::size_t>(row));
    emit placeChosen({finding.item, finding.line});
}

} // namespace orvista
