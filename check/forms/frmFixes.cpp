#include "check/forms/frmFixes.h"

#include "check/forms/FixProgress.h"
#include "display/forms/BeforeAfterPictures.h"
#include "model/Windows1252.h"
#include "widgets/DeviceText.h"
#include "widgets/DeviceTextEdit.h"
#include "widgets/FormParts.h"
#include "widgets/NotAppliedMark.h"
#include "widgets/RowsTable.h"

#include <QFontDatabase>
#include <QFontMetrics>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QItemSelectionModel>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace orvista {

namespace {

/// Texts on one line each, or on lines of their own.
QString textOf(const MendedFinding& mended, std::string OldAndNew::*side, const char* parting) {
    QString text;
    for (const OldAndNew& lines : mended.lines)
        text += (text.isEmpty() ? QString() : QStringLiteral("\n")) +
                QString::fromStdString(utf8FromWindows1252(lines.*side));
    text.remove(u'\r');
    return text.replace(u'\n', QString::fromUtf8(parting));
}

/// In the font of scripts, in which blanks can be counted.
DeviceTextEdit* shownLines(const QString& name, const QString& whatItIs) {
    auto* const lines = named<DeviceTextEdit>(name);
    lines->setReadOnly(true);
    lines->setLineWrapMode(QPlainTextEdit::NoWrap);
    lines->setAccessibleName(whatItIs);
    const QFontMetrics letters(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    lines->setFixedHeight(letters.lineSpacing() * 4);
    return lines;
}

} // namespace

frmFixes::frmFixes(const Subject& subject, std::vector<MendedFinding> all, std::vector<Item> notApplied,
                   QWidget* parent)
    : QDialog(parent),
      subject_(subject),
      all_(std::move(all)),
      notApplied_(std::move(notApplied)),
      shown_(subject.project),
      tblFixes(named<RowsTable>(QStringLiteral("tblFixes"), QStringList{tr("Item"), tr("Line"), tr("Code"),
                                                                        tr("Fix"), tr("Old"), tr("New")})),
      txtFixesOld(shownLines(QStringLiteral("txtFixesOld"), tr("Old lines"))),
      txtFixesNew(shownLines(QStringLiteral("txtFixesNew"), tr("New lines"))),
      pictures_(new BeforeAfterPictures({tr("Old"), tr("New")}, subject.setting)),
      lblFixes(named<QLabel>(QStringLiteral("lblFixes"))),
      btnFixesTickAll(namedButton(QStringLiteral("btnFixesTickAll"), tr("Tick &All"))),
      btnFixesTickNone(namedButton(QStringLiteral("btnFixesTickNone"), tr("Tick &None"))) {
    setObjectName(QStringLiteral("frmFixes"));
    setWindowTitle(tr("Fix Findings"));
    buildLayout();
    fillRows();
    connect(tblFixes, &RowsTable::ticksChanged, this, &frmFixes::showCount);
    connect(tblFixes->selectionModel(), &QItemSelectionModel::currentChanged, this, &frmFixes::showCurrent);
    connect(btnFixesTickAll, &QPushButton::clicked, this, [this] { tblFixes->setTicks(tickable()); });
    connect(btnFixesTickNone, &QPushButton::clicked, this,
            [this] { tblFixes->setTicks(std::vector<bool>(all_.size())); });
    tblFixes->selectRows({0});
    showCurrent();
}

void frmFixes::buildLayout() {
    tblFixes->setAccessibleName(tr("Fixes"));
    tblFixes->makeTickable();
    tblFixes->setWordWrap(false);
    tblFixes->setRowHeight(tblFixes->fontMetrics().lineSpacing() * 3 / 2);
    makeRoom(tblFixes, {.characters = 110, .lines = 10});
    btnFixesTickAll->setToolTip(tr("Make all fixes but those of items that are not applied"));
    btnFixesTickNone->setToolTip(tr("Choose the fixes one by one"));
    auto* const lines = new QGridLayout;
    lines->addWidget(labelFor(txtFixesOld, tr("Old:")), 0, 0);
    lines->addWidget(labelFor(txtFixesNew, tr("New:")), 0, 1);
    lines->addWidget(txtFixesOld, 1, 0);
    lines->addWidget(txtFixesNew, 1, 1);
    const OkCancelBar buttons(this);
    btnOK = buttons.btnOK;
    btnOK->setText(tr("&Fix"));
    btnOK->setToolTip(tr("Make the ticked fixes in one step, which Undo takes back"));
    buttons.layout->insertWidget(0, btnFixesTickAll);
    buttons.layout->insertWidget(1, btnFixesTickNone);
    connect(btnOK, &QPushButton::clicked, this, &frmFixes::btnOK_Click);
    connect(buttons.btnCancel, &QPushButton::clicked, this, &frmFixes::reject);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(tblFixes, 1);
    layout->addLayout(lines);
    layout->addWidget(pictures_);
    layout->addWidget(lblFixes);
    layout->addLayout(buttons.layout);
    setTabOrder(tblFixes, txtFixesOld);
    setTabOrder(txtFixesOld, txtFixesNew);
    setTabOrder(txtFixesNew, btnFixesTickAll);
    setTabOrder(btnFixesTickAll, btnFixesTickNone);
    setTabOrder(btnFixesTickNone, btnOK);
    setTabOrder(btnOK, buttons.btnCancel);
    tblFixes->setFocus();
}

void frmFixes::fillRows() {
    std::vector<TableRow> rows;
    for (const MendedFinding& mended : all_) {
        const Place& place = mended.finding.place;
        rows.push_back(
            {{QString::fromStdString(nameOf(place)), static_cast<int>(rows.size())},
             {place.line == 0 ? QString() : QString::number(place.line), static_cast<qulonglong>(place.line)},
             {QString::fromUtf8(mended.finding.rule().name)},
             {QString::fromStdString(mended.fix.caption)},
             {textOf(mended, &OldAndNew::before, " \xE2\x8F\x8E ")},
             {textOf(mended, &OldAndNew::after, " \xE2\x8F\x8E ") +
              notAppliedMark(notApplied_, place.item)}});
    }
    tblFixes->setRows(std::move(rows));
    tblFixes->setTicks(sure());
    showCount();
}

std::vector<bool> frmFixes::tickable() const {
    std::vector<bool> free;
    for (const MendedFinding& mended : all_)
        free.push_back(std::ranges::none_of(mended.changes, [&](const Change& change) {
            return std::ranges::find(notApplied_, change.item) != notApplied_.end();
        }));
    return free;
}

std::vector<bool> frmFixes::sure() const {
    std::vector<bool> sure = tickable();
    for (std::size_t row = 0; row < sure.size(); ++row)
        sure[row] = sure[row] && all_[row].fix.isSure;
    return sure;
}

void frmFixes::showCount() {
    const auto& ticks = tblFixes->ticks();
    const auto ticked = std::count(ticks.begin(), ticks.end(), true);
    lblFixes->setText(all_.size() == 1 ? tr("1 fix, %1 ticked").arg(ticked)
                                       : tr("%1 fixes, %2 ticked").arg(all_.size()).arg(ticked));
    btnOK->setEnabled(ticked > 0);
}

void frmFixes::showCurrent() {
    const int row = tblFixes->rowOf(tblFixes->currentIndex());
    if (row < 0)
        return;
    const MendedFinding& mended = all_[static_cast<std::size_t>(row)];
    txtFixesOld->setPlainText(textOf(mended, &OldAndNew::before, "\n"));
    txtFixesNew->setPlainText(textOf(mended, &OldAndNew::after, "\n"));
    showPictures(static_cast<std::size_t>(row));
}

void frmFixes::goTo(std::size_t row) {
    for (; shownFixes_ < row; ++shownFixes_)
        applyChanges(shown_, all_[shownFixes_].changes);
    for (; shownFixes_ > row; --shownFixes_)
        revertChanges(shown_, all_[shownFixes_ - 1].changes);
}

void frmFixes::showPictures(std::size_t row) {
    const Place& place = all_[row].finding.place;
    if (!isMessage(place.item) || !place.file.empty())
        return pictures_->showNothing();
    goTo(row);
    const Project before = shown_;
    goTo(row + 1);
    pictures_->showPages({before, subject_.bitmaps, scriptOf(before, place.item), place.line},
                         {shown_, subject_.bitmaps, scriptOf(shown_, place.item), place.line});
}

bool frmFixes::mend(Fixing& fixing) {
    goTo(0);
    const bool isSame = std::ranges::all_of(
        allItems(), [&](Item item) { return changesBetween(shown_, subject_.project, item).empty(); });
    FixProgress progress(*this);
    const bool isDone = mendSome(fixing, {all_, tblFixes->ticks(), isSame}, progress.goesOn());
    progress.reset();
    showCurrent();
    return isDone;
}

void frmFixes::btnOK_Click() {
    Fixing fixing(subject_.project, subject_.bitmaps, subject_.columns, subject_.kept);
    if (!mend(fixing))
        return;
    for (const Item item : allItems())
        for (Change& change : changesBetween(subject_.project, fixing.project(), item))
            Fixed.push_back(std::move(change));
    IsCanceled = Fixed.empty();
    accept();
}

void frmFixes::reject() {
    IsCanceled = true;
    QDialog::reject();
}

} // namespace orvista
