#include "compare/forms/ComparisonPanel.h"

#include "compare/HeldSentences.h"
#include "display/FolderBitmaps.h"
#include "display/forms/BeforeAfterPictures.h"
#include "items/forms/LabelCell.h"
#include "items/forms/ShownTexts.h"
#include "model/BitmapName.h"
#include "model/Lines.h"
#include "model/PathRules.h"
#include "model/Windows1252.h"
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

#include <algorithm>
#include <iterator>
#include <system_error>
#include <utility>

namespace orvista {

namespace {

QString bytesText(std::uint64_t count) {
    return ComparisonPanel::tr("%L1 bytes").arg(count);
}

QString sizeText(const std::optional<std::uint64_t>& size) {
    return size ? bytesText(*size) : ComparisonPanel::tr("not there");
}

QString theirsText(const HeldAnswer& file) {
    const QString size = sizeText(file.sizeAfter);
    if (!file.firstOffset)
        return size;
    const auto byte = *file.firstOffset + 1;
    return file.state == HeldState::Equal
               ? ComparisonPanel::tr("%1, the same, written differently from byte %L2 onwards")
                     .arg(size)
                     .arg(byte)
               : ComparisonPanel::tr("%1, differs from byte %L2 onwards").arg(size).arg(byte);
}

TableRow fileRow(const HeldAnswer& file, int position, ComparisonPanel::Question question) {
    const bool isUnseen = !file.counts && isBitmapName(file.name);
    TableRow row{{QString::fromStdString(file.name), position},
                 {},
                 {isUnseen ? ComparisonPanel::tr("shown by no message") : QString(), position},
                 {sizeText(file.sizeBefore)},
                 {theirsText(file)}};
    for (TableCell& cell : row)
        cell.isFaint = isUnseen && question == ComparisonPanel::Question::WhatDiffers;
    return row;
}

TableRow differenceRow(const DifferenceRow& row, const ItemNote& note, int position, const QString& mark) {
    const QString line = row.lineBefore > 0 ? QString::number(row.lineBefore) : QString();
    const std::size_t from = shownFrom(row.before, row.after);
    return {{QString::fromStdString(nameOf(row.item)), position},
            labelCell(note),
            {row.isLine() ? line : QString::fromUtf8(row.field->name), position},
            {shortened(row.before, from)},
            {shortened(row.after, from) + mark}};
}

/// What an upload sends and the display does not hold byte for byte.
std::vector<HeldAnswer> filesNotHeld(const ContentsComparison& comparison) {
    std::vector<HeldAnswer> listed;
    for (const auto* const answers : {&comparison.files, &comparison.bitmaps})
        std::ranges::copy_if(*answers, std::back_inserter(listed), [](const HeldAnswer& answer) {
            return answer.state != HeldState::Same && answer.state != HeldState::Extra;
        });
    return listed;
}

/// Device files that no row explains, bitmaps that a message shows, then the others.
std::vector<HeldAnswer> filesThatDiffer(const ContentsComparison& comparison) {
    std::vector<HeldAnswer> listed = comparison.unexplainedFiles();
    for (const bool counts : {true, false})
        std::ranges::copy_if(comparison.bitmaps, std::back_inserter(listed), [&](const HeldAnswer& answer) {
            return answer.counts == counts && !answer.isWell();
        });
    return listed;
}

QString differencesText(std::size_t count, const QString& name) {
    if (count == 0)
        return ComparisonPanel::tr("No differences between this project and %1").arg(name);
    if (count == 1)
        return ComparisonPanel::tr("1 difference between this project and %1").arg(name);
    return ComparisonPanel::tr("%1 differences between this project and %2")
        .arg(QString::number(count), name);
}

/// Where the row is in the script of that side; where it has no such line, where that line would stand.
std::size_t lineOn(const Project& side, const Project& other, const DifferenceRow& row) {
    if (row.lineBefore > 0)
        return row.lineBefore;
    const auto changes = takenOver(side, other, {&row, 1});
    return changes.empty() ? 1 : firstDifferentLine(changes.front().before, changes.front().after);
}

DifferenceRow seenFromTheirs(DifferenceRow row) {
    std::swap(row.lineBefore, row.lineAfter);
    std::swap(row.before, row.after);
    return row;
}

/// Those of the folder that the contents came from.
std::unique_ptr<BitmapProvider> bitmapsOf(const DisplayContents& contents) {
    const auto& bitmaps = contents.bitmaps();
    const auto parts = bitmaps.empty() ? std::nullopt : PathRules::native().split(bitmaps.front().path);
    if (!parts)
        return std::make_unique<NoBitmaps>();
    return std::make_unique<FolderBitmaps>(parts->folder);
}

QString fingerprintsText(const std::string& ours, const std::string& theirs) {
    return ours == theirs ? ComparisonPanel::tr("(fingerprint %1)").arg(QString::fromStdString(ours))
                          : ComparisonPanel::tr("(fingerprints %1 and %2)")
                                .arg(QString::fromStdString(ours), QString::fromStdString(theirs));
}

} // namespace

ComparisonPanel::ComparisonPanel(const Project& project, std::function<std::vector<Item>()> notAppliedItems,
                                 PreviewSettingSource setting)
    : project_(project),
      notAppliedItems_(std::move(notAppliedItems)),
      lblComparison(named<QLabel>(QStringLiteral("lblComparison"))),
      btnTakeTheirs(namedButton(QStringLiteral("btnTakeTheirs"), tr("Ta&ke Theirs"))),
      tblComparison(
          named<RowsTable>(QStringLiteral("tblComparison"), QStringList{tr("Item"), tr("Label"), tr("Where"),
                                                                        tr("This project"), tr("Theirs")})),
      pictures_(new BeforeAfterPictures({tr("This project"), tr("Theirs")}, std::move(setting))) {
    buildLayout();
    connect(tblComparison, &RowsTable::rowActivated, this, &ComparisonPanel::goToRow);
    connect(tblComparison, &RowsTable::rowLeft, this, &ProjectPanel::rowLeft);
    connect(tblComparison->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &ComparisonPanel::enableTake);
    connect(tblComparison->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &ComparisonPanel::showPictures);
    connect(btnTakeTheirs, &QPushButton::clicked, this, &ComparisonPanel::btnTakeTheirs_Click);
    clear();
}

void ComparisonPanel::buildLayout() {
    lblComparison->setTextFormat(Qt::PlainText);
    lblComparison->setWordWrap(true);
    btnTakeTheirs->setToolTip(
        tr("Let the selected rows hold what the other side has; Edit > Undo takes that back"));
    tblComparison->setAccessibleName(tr("Differences"));
    constexpr int thisProject = 3; // as wide as theirs, the last one
    tblComparison->horizontalHeader()->setSectionResizeMode(thisProject, QHeaderView::Stretch);
    auto* const head = new QHBoxLayout;
    head->addWidget(lblComparison, 1);
    head->addWidget(btnTakeTheirs);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, layout->spacing(), 0, 0);
    layout->addLayout(head);
    layout->addWidget(tblComparison, 1);
    layout->addWidget(pictures_);
}

void ComparisonPanel::compareWith(Theirs theirs, Question question) {
    theirs_ = std::move(theirs);
    question_ = question;
    try {
        compare();
    } catch (const std::system_error&) {
        clear();
        throw;
    }
}

void ComparisonPanel::clear() {
    theirs_.reset();
    showNothing(tr("Nothing to compare yet. Use Tools > Compare."));
}

void ComparisonPanel::showNothing(const QString& reason) {
    rows_.clear();
    files_.clear();
    markNotApplied();
    lblComparison->setText(reason);
}

void ComparisonPanel::follow() {
    if (!theirs_ || !isVisible())
        return;
    try {
        compare();
    } catch (const std::system_error& failure) {
        showNothing(tr("Nothing to compare: %1").arg(QString::fromUtf8(failure.what())));
    }
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

DisplayContents ComparisonPanel::ours(const Project& project, const Theirs& theirs) {
    if (theirs.display)
        return DisplayContents::ofProject(expand(project, *theirs.display).project);
    return theirs.ownFilesAddress ? DisplayContents::ofProject(project) : DisplayContents::ofUpload(project);
}

void ComparisonPanel::compare() {
    const DisplayContents ours = ComparisonPanel::ours(project_, *theirs_);
    const ContentsComparison comparison = compareContents(ours, theirs_->contents);
    const QString fingerprints = fingerprintsText(fingerprint(ours), fingerprint(theirs_->contents));
    sent_ = ours.project();
    rows_ = differenceRows(comparison.items);
    files_ = question_ == Question::HoldsAll ? filesNotHeld(comparison) : filesThatDiffer(comparison);
    const auto count =
        rows_.size() + static_cast<std::size_t>(std::ranges::count(files_, true, &HeldAnswer::counts));
    lblComparison->setText((question_ == Question::HoldsAll ? QString::fromStdString(verifiedText(
                                                                  theirs_->name.toStdString(), comparison))
                                                            : differencesText(count, theirs_->name)) +
                           u' ' + fingerprints + systemPageText());
    markNotApplied();
}

/// What no item and no device file tells of the project's own file.
QString ComparisonPanel::systemPageText() const {
    const auto& address = theirs_->ownFilesAddress;
    if (!address || *address == project_.IP)
        return {};
    return tr("; its System page says %1").arg(QString::fromStdString(utf8FromWindows1252(*address)));
}

void ComparisonPanel::markNotApplied() {
    const std::vector<Item> notApplied = notAppliedItems_();
    std::vector<TableRow> rows;
    for (const DifferenceRow& row : rows_)
        rows.push_back(differenceRow(row, notes_->of(row.item), static_cast<int>(rows.size()),
                                     notAppliedMark(notApplied, row.item)));
    for (const HeldAnswer& file : files_)
        rows.push_back(fileRow(file, static_cast<int>(rows.size()), question_));
    // They keep their place while any row needs it, so that none slips out of sight when they come.
    pictures_->setVisible(std::ranges::any_of(rows_, &DifferenceRow::isLine));
    tblComparison->setRows(std::move(rows));
    enableTake();
    showPictures();
}

void ComparisonPanel::showPictures() {
    const int current = tblComparison->rowOf(tblComparison->currentIndex());
    const auto index = static_cast<std::size_t>(current);
    const bool isLine = current >= 0 && index < rows_.size() && rows_[index].isLine();
    if (!isLine)
        return pictures_->showNothing();
    const DifferenceRow& row = rows_[index];
    const Project& theirs = theirs_->contents.project();
    const FolderBitmaps ourBitmaps(project_.ProjPath);
    const auto theirBitmaps = bitmapsOf(theirs_->contents);
    pictures_->showPages(
        {sent_, ourBitmaps, scriptOf(sent_, row.item), lineOn(sent_, theirs, row)},
        {theirs, *theirBitmaps, scriptOf(theirs, row.item), lineOn(theirs, sent_, seenFromTheirs(row))});
}

void ComparisonPanel::followSetting() {
    if (isVisible()) // else when it comes to the screen
        showPictures();
}

std::vector<DifferenceRow> ComparisonPanel::selectedRows() const {
    std::vector<DifferenceRow> selected;
    for (const int row : tblComparison->selectedRows()) {
        const auto index = static_cast<std::size_t>(row);
        if (index >= rows_.size())
            continue;
        // What a master's places became on one display is not for all.
        const bool isFilled = theirs_->display && !changesBetween(project_, sent_, rows_[index].item).empty();
        if (!isFilled)
            selected.push_back(rows_[index]);
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
    if (!theirs_)
        return;
    // The files may say less than the project, or were changed beside it.
    const auto changes = fitted(takenOver(sent_, theirs_->contents.project(), selectedRows()), project_);
    if (!changes.empty())
        emit takeWanted(changes);
}

void ComparisonPanel::goToRow(int row) {
    const auto index = static_cast<std::size_t>(row);
    if (index < rows_.size())
        emit placeChosen({rows_[index].item, rows_[index].lineBefore});
}

} // namespace orvista
