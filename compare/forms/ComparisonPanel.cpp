#include "compare/forms/ComparisonPanel.h"

#include "items/forms/ShownTexts.h"
#include "widgets/FormParts.h"
#include "widgets/NotAppliedMark.h"
#include "widgets/RowsTable.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace orvista {

namespace {

QString bytesText(std::uint64_t count) {
    return ComparisonPanel::tr("%L1 bytes").arg(count);
}

QString sizeText(const std::optional<std::uint64_t>& size) {
    return size ? bytesText(*size) : ComparisonPanel::tr("not there");
}

TableRow fileRow(const FileDifference& file, int position) {
    QString theirs = sizeText(file.sizeAfter);
    if (file.firstOffset)
        theirs += ComparisonPanel::tr(", differs from byte %L1 onwards").arg(*file.firstOffset + 1);
    return {
        {QString::fromStdString(file.name), position}, {QString()}, {sizeText(file.sizeBefore)}, {theirs}};
}

TableRow differenceRow(const DifferenceRow& row, int position, const QString& mark) {
    const QString line = row.lineBefore > 0 ? QString::number(row.lineBefore) : QString();
    const std::size_t from = shownFrom(row.before, row.after);
    return {{QString::fromStdString(nameOf(row.item)), position},
            {row.isLine() ? line : QString::fromUtf8(row.field->name), position},
            {shortened(row.before, from)},
            {shortened(row.after, from) + mark}};
}

} // namespace

ComparisonPanel::ComparisonPanel(const Project& project, std::function<std::vector<Item>()> notAppliedItems)
    : project_(project),
      notAppliedItems_(std::move(notAppliedItems)),
      lblComparison(named<QLabel>(QStringLiteral("lblComparison"))),
      btnTakeTheirs(namedButton(QStringLiteral("btnTakeTheirs"), tr("Ta&ke Theirs"))),
      tblComparison(
          named<RowsTable>(QStringLiteral("tblComparison"),
                           QStringList{tr("Item"), tr("Where"), tr("This project"), tr("Theirs")})) {
    buildLayout();
    connect(tblComparison, &RowsTable::rowActivated, this, &ComparisonPanel::leadToRow);
    connect(tblComparison, &RowsTable::rowLeft, this, &ProjectPanel::rowLeft);
    connect(tblComparison->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &ComparisonPanel::enableTake);
    connect(btnTakeTheirs, &QPushButton::clicked, this, &ComparisonPanel::btnTakeTheirs_Click);
    clear();
}

void ComparisonPanel::buildLayout() {
    lblComparison->setTextFormat(Qt::PlainText);
    lblComparison->setWordWrap(true);
    btnTakeTheirs->setToolTip(
        tr("Let the selected rows hold what the other side has; Edit > Undo takes that back"));
    tblComparison->setAccessibleName(tr("Differences"));
    constexpr int thisProject = 2; // as wide as theirs, the last one
    tblComparison->horizontalHeader()->setSectionResizeMode(thisProject, QHeaderView::Stretch);
    auto* const head = new QHBoxLayout;
    head->addWidget(lblComparison, 1);
    head->addWidget(btnTakeTheirs);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, layout->spacing(), 0, 0);
    layout->addLayout(head);
    layout->addWidget(tblComparison, 1);
}

void ComparisonPanel::compareWith(Theirs theirs) {
    theirs_ = std::move(theirs);
    files_ = theirs_->bitmaps;
    compare();
}

void ComparisonPanel::showVerified(const Verified& verified) {
    theirs_.reset();
    rows_.clear();
    files_ = verified.differences;
    markNotApplied();
    const QString all = QString::number(verified.files);
    lblComparison->setText(
        files_.empty()
            ? tr("%1 holds every byte of the %2 files that an upload sends").arg(verified.name, all)
            : tr("%1 of the %2 files that an upload sends are not the same on %3")
                  .arg(QString::number(files_.size()), all, verified.name));
}

void ComparisonPanel::clear() {
    theirs_.reset();
    rows_.clear();
    files_.clear();
    markNotApplied();
    lblComparison->setText(tr("Nothing to compare yet. Use Tools > Compare."));
}

void ComparisonPanel::follow() {
    if (theirs_ && isVisible())
        compare();
}

void ComparisonPanel::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    follow();
}

void ComparisonPanel::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    // Without a project there is nothing to compare with either.
    if (event->type() == QEvent::EnabledChange && !isEnabled())
        clear();
}

void ComparisonPanel::compare() {
    rows_ = differenceRows(compareItems(project_, theirs_->project));
    markNotApplied();
    lblComparison->setText(summary());
}

QString ComparisonPanel::summary() const {
    const std::size_t count = rows_.size() + files_.size();
    if (count == 0)
        return tr("No differences between this project and %1").arg(theirs_->name);
    if (count == 1)
        return tr("1 difference between this project and %1").arg(theirs_->name);
    return tr("%1 differences between this project and %2").arg(QString::number(count), theirs_->name);
}

void ComparisonPanel::markNotApplied() {
    const std::vector<Item> notApplied = notAppliedItems_();
    std::vector<TableRow> rows;
    for (const DifferenceRow& row : rows_)
        rows.push_back(
            differenceRow(row, static_cast<int>(rows.size()), notAppliedMark(notApplied, row.item)));
    for (const FileDifference& file : files_)
        rows.push_back(fileRow(file, static_cast<int>(rows.size())));
    tblComparison->setRows(std::move(rows));
    enableTake();
}

std::vector<DifferenceRow> ComparisonPanel::selectedRows() const {
    std::vector<DifferenceRow> selected;
    for (const int row : tblComparison->selectedRows()) {
        if (static_cast<std::size_t>(row) < rows_.size())
            selected.push_back(rows_[static_cast<std::size_t>(row)]);
    }
    return selected;
}

void ComparisonPanel::enableTake() {
    if (!selectedRows().empty())
        btnTakeTheirs->setEnabled(true);
    else
        disableUsed(btnTakeTheirs, tblComparison);
}

void ComparisonPanel::btnTakeTheirs_Click() {
    if (theirs_)
        emit takeWanted(takenOver(project_, theirs_->project, selectedRows()));
}

void ComparisonPanel::leadToRow(int row) {
    const auto index = static_cast<std::size_t>(row);
    if (index < rows_.size())
        emit placeChosen({rows_[index].item, rows_[index].lineBefore});
}

} // namespace orvista
