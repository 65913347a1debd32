#include "items/forms/frmReplace.h"

#include "display/forms/BeforeAfterPictures.h"
#include "widgets/DeviceLineEdit.h"
#include "widgets/DeviceText.h"
#include "widgets/FormParts.h"
#include "widgets/NotAppliedMark.h"
#include "widgets/QuietTimer.h"
#include "widgets/RowsTable.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace orvista {

namespace {

QString whereText(ReplaceWhere where) {
    switch (where) {
    case ReplaceWhere::Text:
        return frmReplace::tr("text");
    case ReplaceWhere::Bitmap:
        return frmReplace::tr("bitmap");
    case ReplaceWhere::Other:
        return frmReplace::tr("other");
    }
    return {};
}

} // namespace

frmReplace::frmReplace(const Project& project, std::vector<Item> notApplied, PreviewSettingSource setting,
                       QWidget* parent)
    : QDialog(parent),
      project_(project),
      notApplied_(std::move(notApplied)),
      txtReplaceFind(named<DeviceLineEdit>(QStringLiteral("txtReplaceFind"))),
      txtReplaceWith(named<DeviceLineEdit>(QStringLiteral("txtReplaceWith"))),
      chkReplaceCase(named<QCheckBox>(QStringLiteral("chkReplaceCase"), tr("&Match case"))),
      tblReplace(named<RowsTable>(QStringLiteral("tblReplace"),
                                  QStringList{tr("Message"), tr("Line"), tr("Where"), tr("Old"), tr("New")})),
      pictures_(new BeforeAfterPictures({tr("Old"), tr("New")}, std::move(setting))),
      lblReplace(named<QLabel>(QStringLiteral("lblReplace"))),
      btnReplaceTickAll(namedButton(QStringLiteral("btnReplaceTickAll"), tr("Tick &All"))),
      btnReplaceTickNone(namedButton(QStringLiteral("btnReplaceTickNone"), tr("Tick &None"))) {
    setObjectName(QStringLiteral("frmReplace"));
    setWindowTitle(tr("Replace in Messages"));
    buildLayout();
    for (DeviceLineEdit* const box : {txtReplaceFind, txtReplaceWith})
        connect(box, &QLineEdit::textChanged, this, &frmReplace::find);
    connect(chkReplaceCase, &QCheckBox::toggled, this, &frmReplace::find);
    connect(tblReplace, &RowsTable::ticksChanged, this, &frmReplace::showCount);
    connect(btnReplaceTickAll, &QPushButton::clicked, this, [this] { tblReplace->setTicks(tickable()); });
    connect(btnReplaceTickNone, &QPushButton::clicked, this, [this] { tblReplace->setTicks({}); });
    connect(tblReplace->selectionModel(), &QItemSelectionModel::currentChanged, this, [this] {
        if (!quiet_.isActive())
            showPictures();
    });
    // A QuietTimer would wait for this dialog to be closed.
    quiet_.setSingleShot(true);
    quiet_.setInterval(QuietTimer::usual);
    connect(&quiet_, &QTimer::timeout, this, &frmReplace::showPictures);
    find();
}

void frmReplace::buildLayout() {
    txtReplaceFind->explain(tr("Text to look for in the scripts of all messages"));
    txtReplaceWith->explain(tr("What stands there afterwards"));
    chkReplaceCase->setToolTip(tr("Match case"));
    tblReplace->setAccessibleName(tr("Places"));
    tblReplace->makeTickable();
    tblReplace->setWordWrap(false);
    tblReplace->setRowHeight(tblReplace->fontMetrics().lineSpacing() * 3 / 2);
    makeRoom(tblReplace, {.characters = 110, .lines = 10});
    btnReplaceTickAll->setToolTip(tr("Replace all places but those of messages that are not applied"));
    btnReplaceTickNone->setToolTip(tr("Choose the places one by one"));
    auto* const boxes = new QFormLayout;
    auto* const find = labelFor(txtReplaceFind, tr("Find:"));
    auto* const with = labelFor(txtReplaceWith, tr("Replace with:"));
    boxes->addRow(find, txtReplaceFind);
    boxes->addRow(with, txtReplaceWith);
    boxes->addRow(nullptr, chkReplaceCase);
    const OkCancelBar buttons(this);
    btnOK = buttons.btnOK;
    btnOK->setText(tr("&Replace"));
    btnOK->setToolTip(tr("Replace the ticked places in one step, which Undo takes back"));
    buttons.layout->insertWidget(0, btnReplaceTickAll);
    buttons.layout->insertWidget(1, btnReplaceTickNone);
    connect(btnOK, &QPushButton::clicked, this, &frmReplace::btnOK_Click);
    connect(buttons.btnCancel, &QPushButton::clicked, this, &frmReplace::reject);

    auto* const layout = new QVBoxLayout(this);
    layout->addLayout(boxes);
    layout->addWidget(tblReplace, 1);
    layout->addWidget(pictures_);
    layout->addWidget(lblReplace);
    layout->addLayout(buttons.layout);
    setTabOrder(tblReplace, btnReplaceTickAll);
    setTabOrder(btnReplaceTickAll, btnReplaceTickNone);
    setTabOrder(btnReplaceTickNone, btnOK);
    setTabOrder(btnOK, buttons.btnCancel);
    txtReplaceFind->setFocus();
}

void frmReplace::find() {
    // While somebody types there are new places with each key: nothing is drawn until then.
    quiet_.start();
    hits_ = findToReplace(project_, txtReplaceFind->bytes(), txtReplaceWith->bytes(),
                          chkReplaceCase->isChecked() ? Case::Matters : Case::Folded);
    std::vector<TableRow> rows;
    for (const ReplaceHit& hit : hits_.list) {
        rows.push_back({{QString::fromStdString(nameOf(hit.message)), static_cast<int>(rows.size())},
                        {QString::number(hit.line), static_cast<qulonglong>(hit.line)},
                        {whereText(hit.where)},
                        {shownLine(hit.before)},
                        {shownLine(hit.after) + notAppliedMark(notApplied_, hit.message)}});
    }
    tblReplace->setRows(std::move(rows));
    tblReplace->setTicks(texts());
    showCount();
}

void frmReplace::showPictures() {
    const int current = tblReplace->rowOf(tblReplace->currentIndex());
    const auto row = static_cast<std::size_t>(std::max(current, 0)); // the first one before there is a choice
    if (row >= hits_.list.size())
        return pictures_->showNothing();
    const auto changes =
        replacedScripts(project_, {hits_.list[row]}, txtReplaceFind->bytes().size(), txtReplaceWith->bytes());
    if (changes.empty())
        return pictures_->showNothing();
    pictures_->showChange(project_, changes.front().before, changes.front().after);
}

std::vector<bool> frmReplace::texts() const {
    std::vector<bool> texts = tickable();
    for (std::size_t row = 0; row < texts.size(); ++row)
        texts[row] = texts[row] && hits_.list[row].where == ReplaceWhere::Text;
    return texts;
}

std::vector<bool> frmReplace::tickable() const {
    std::vector<bool> free;
    for (const ReplaceHit& hit : hits_.list)
        free.push_back(std::ranges::find(notApplied_, hit.message) == notApplied_.end());
    return free;
}

std::vector<ReplaceHit> frmReplace::tickedHits() const {
    std::vector<ReplaceHit> ticked;
    for (std::size_t row = 0; row < hits_.list.size(); ++row)
        if (tblReplace->ticks().at(row))
            ticked.push_back(hits_.list[row]);
    return ticked;
}

void frmReplace::showCount() {
    const auto& ticks = tblReplace->ticks();
    const auto ticked = std::count(ticks.begin(), ticks.end(), true);
    const std::size_t found = hits_.list.size();
    if (found == 0)
        lblReplace->setText(txtReplaceFind->text().isEmpty() ? QString() : tr("Not found"));
    else if (!hits_.isComplete)
        lblReplace->setText(tr("First %1 matches, %2 selected").arg(found).arg(ticked));
    else if (found == 1)
        lblReplace->setText(tr("1 match, %1 selected").arg(ticked));
    else
        lblReplace->setText(tr("%1 matches, %2 selected").arg(found).arg(ticked));
    btnOK->setEnabled(ticked > 0);
}

void frmReplace::keyPressEvent(QKeyEvent* event) {
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    // Enter after the word to look for is not the wish to replace it by nothing.
    if (isEnter && focusWidget() == txtReplaceFind)
        txtReplaceWith->setFocus(Qt::TabFocusReason);
    else
        QDialog::keyPressEvent(event);
}

void frmReplace::btnOK_Click() {
    Replaced =
        replacedScripts(project_, tickedHits(), txtReplaceFind->bytes().size(), txtReplaceWith->bytes());
    IsCanceled = false;
    accept();
}

void frmReplace::reject() {
    IsCanceled = true;
    QDialog::reject();
}

} // namespace orvista
