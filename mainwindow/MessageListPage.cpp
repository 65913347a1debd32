#include "mainwindow/MessageListPage.h"

#include "display/forms/DisplayPreview.h"
#include "display/forms/ScriptUnderlines.h"
#include "items/forms/LabelCell.h"
#include "mainwindow/Guard.h"
#include "mainwindow/ItemTree.h"
#include "model/Item.h"
#include "model/Lines.h"
#include "model/Numbers.h"
#include "script/forms/frmMessageEdit.h"
#include "widgets/DeviceText.h"
#include "widgets/DeviceTextEdit.h"
#include "widgets/FormParts.h"
#include "widgets/NotAppliedLabel.h"
#include "widgets/QuietTimer.h"
#include "widgets/ScriptPositions.h"
#include "widgets/ShownBox.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSplitter>
#include <QTextCursor>

#include <utility>

namespace orvista {

namespace {

/// Up to here a script is compared at each key, in no time; longer ones when the keys have come to rest.
constexpr int charactersComparedAtOnce = 64 * 1024;
/// Of the script, to be seen in the smallest window.
constexpr int leastLines = 6;
/// Of a message, in wide letters, with the box's frame: "STDMSG40".
constexpr int longestMessageName = 13;

} // namespace

MessageListPage::MessageListPage(Project& project, ModifiedMark& modifiedMark, Messages& messages,
                                 PreviewClock clock, QWidget* parent)
    : QWidget(parent),
      project_(project),
      modifiedMark_(modifiedMark),
      trvMsg(named<ItemTree>(QStringLiteral("trvMsg"))),
      txtMsgName(named<ShownBox>(QStringLiteral("txtMsgName"))),
      txtMsgSno(named<ShownBox>(QStringLiteral("txtMsgSno"))),
      txtMsg(named<DeviceTextEdit>(QStringLiteral("txtMsg"))),
      btnEditMessage(namedButton(QStringLiteral("btnEditMessage"), QStringLiteral("Message Wizard"))),
      btnMsgApply(namedButton(QStringLiteral("btnMsgApply"), QStringLiteral("Apply"))),
      lblNotApplied(new NotAppliedLabel),
      comparison_(new QuietTimer(
          QuietTimer::usual, [this] { compare(); }, this)),
      preview_(new DisplayPreview(project, *txtMsg, messages, std::move(clock))),
      underlines_(new ScriptUnderlines(
          *txtMsg, project, {[this] { return shownItem(); }, [this] { return preview_->columns(); }}, this)) {
    trvMsg->setAccessibleName(tr("Messages"));
    widenTo(txtMsgName, longestMessageName);
    auto* splitter = new QSplitter;
    splitter->addWidget(trvMsg);
    splitter->addWidget(buildDetails());
    splitter->setStretchFactor(1, 1);
    splitter->setChildrenCollapsible(false);
    auto* layout = new QVBoxLayout(this);
    keepMarginsSmall(*layout);
    layout->addWidget(splitter);
    buildUnusedLists();
    connectHandlers(messages);
    connect(preview_, &DisplayPreview::columnsChanged, underlines_, &ScriptUnderlines::checkSoon);
    connect(preview_, &DisplayPreview::bitmapsChanged, underlines_, &ScriptUnderlines::checkSoon);
}

QWidget* MessageListPage::buildDetails() {
    auto* nameRow = new QHBoxLayout;
    nameRow->addWidget(labelFor(txtMsgName, QStringLiteral("Message Name:")));
    nameRow->addWidget(txtMsgName, 2);
    nameRow->addSpacing(nameRow->spacing());
    nameRow->addWidget(labelFor(txtMsgSno, QStringLiteral("Message Serial:")));
    nameRow->addWidget(txtMsgSno, 1);

    txtMsg->setAccessibleName(tr("Message script"));
    btnEditMessage->setToolTip(tr("Compose a page of the message and add it to the script"));
    btnMsgApply->setToolTip(tr("Store the script in the project"));
    txtMsg->setEnabled(false);
    btnEditMessage->setEnabled(false);
    btnMsgApply->setEnabled(false);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(lblNotApplied, 1);
    auto* const masterFit = new QHBoxLayout;
    buttons->addLayout(masterFit);
    preview_->setMasterFitRow(*masterFit);
    buttons->addWidget(btnEditMessage);
    buttons->addWidget(btnMsgApply);

    auto* details = new QWidget;
    auto* layout = new QVBoxLayout(details);
    layout->setContentsMargins(layout->spacing(), 0, 0, 0);
    layout->addLayout(nameRow);
    layout->addWidget(buildScriptSplitter(), 1);
    layout->addLayout(buttons);
    // The preview lies below the box, but comes after the buttons.
    QWidget::setTabOrder(txtMsg, btnEditMessage);
    QWidget::setTabOrder(btnEditMessage, btnMsgApply);
    return details;
}

QWidget* MessageListPage::buildScriptSplitter() {
    txtMsg->setLeastLines(leastLines);
    auto* splitter = new QSplitter(Qt::Vertical);
    splitter->setChildrenCollapsible(false);
    splitter->addWidget(txtMsg);
    splitter->addWidget(preview_);
    splitter->setStretchFactor(0, 1);
    return splitter;
}

void MessageListPage::buildUnusedLists() {
    // The page carries two lists that it never shows; the second one stands for the project's bitmaps.
    named<QListWidget>(QStringLiteral("List1"), this)->hide();
    auto* bmpList = named<QListWidget>(QStringLiteral("bmpList"), this);
    bmpList->setProperty("pattern", QStringLiteral("*.bmp"));
    bmpList->hide();
}

void MessageListPage::connectHandlers(Messages& messages) {
    connect(trvMsg, &ItemTree::NodeClick, this, &MessageListPage::trvMsg_NodeClick);
    connect(txtMsg, &QPlainTextEdit::textChanged, this, &MessageListPage::txtMsg_Change);
    connect(txtMsg, &QPlainTextEdit::textChanged, this, &MessageListPage::compareSoon);
    connect(txtMsg, &QPlainTextEdit::textChanged, this, &MessageListPage::edited);
    connectGuarded(messages, btnEditMessage, &QPushButton::clicked, this,
                   &MessageListPage::btnEditMessage_Click);
    connectGuarded(messages, btnMsgApply, &QPushButton::clicked, this, &MessageListPage::btnMsgApply_Click);
}

const std::string* MessageListPage::storedScript() const {
    const auto message = shownItem();
    return message ? &scriptOf(project_, *message) : nullptr;
}

void MessageListPage::noteDiscarded(bool differs) {
    if (differs && !txtMsg->document()->isEmpty())
        emit discarded(*shownItem(), txtMsg->bytes());
}

void MessageListPage::trvMsg_NodeClick(QTreeWidgetItem* node) {
    noteDiscarded(isNotApplied());
    if (const auto message = itemOfKey(nodeKey(*node).toStdString()))
        showMessage(*message);
    else
        showNothing();
    btnMsgApply->setEnabled(false);
    compare();
}

void MessageListPage::showMessage(Item message) {
    txtMsgName->setBytes(nameOf(message)); // first, since the script is compared as it is written
    txtMsg->setBytes(scriptOf(project_, message));
    txtMsgSno->setBytes((message.kind == Kind::Regular ? " " : "") + decimalText(message.index + 1));
    txtMsg->setEnabled(true);
    btnEditMessage->setEnabled(true);
    preview_->restart();
}

void MessageListPage::showNothing() {
    txtMsgName->clear();
    txtMsgSno->clear();
    txtMsg->setBytes({});
    txtMsg->setEnabled(false);
    btnEditMessage->setEnabled(false);
    preview_->restart();
}

void MessageListPage::refresh() {
    // The project holds another script already. What was found last tells; a long one that was just edited
    // is taken to differ.
    noteDiscarded(!lblNotApplied->isHidden() || comparison_->isActive());
    if (const std::string* const script = storedScript())
        txtMsg->setBytes(*script);
    preview_->restart();
    btnMsgApply->setEnabled(false);
    compare();
}

void MessageListPage::followProject() {
    preview_->followProject();
    underlines_->checkSoon();
}

void MessageListPage::useMaster(const MasterView& view) {
    master_ = &view;
    preview_->useMaster(view);
    underlines_->useMaster(view);
}

void MessageListPage::followMaster() {
    preview_->followMaster();
    underlines_->checkSoon();
}

void MessageListPage::txtMsg_Change() {
    if (!txtMsg->document()->isEmpty())
        btnMsgApply->setEnabled(true);
}

void MessageListPage::btnEditMessage_Click() {
    frmMessageEdit wizard(QString::fromStdString(project_.ProjPath), window());
    wizard.showPreview(project_, preview_->columns(), preview_->shownValues(), master_);
    wizard.explainVariables([this](const QString& name) {
        const auto item = itemNamed(name.toStdString());
        return item ? noteToolTip(notes_->of(*item)) : QString();
    });
    wizard.exec();
    if (wizard.PartialScript.empty())
        return;
    addScriptPart(wizard.PartialScript);
    btnMsgApply->setEnabled(true);
}

void MessageListPage::addScriptPart(const std::string& part) {
    if (txtMsg->bytes() == clearScript)
        return typeScript(part);
    QTextCursor cursor(txtMsg->document());
    cursor.movePosition(QTextCursor::End);
    cursor.insertText(shownScript(std::string(lineEnd) + part));
}

/// Edited through a cursor, as the parts are, so that the box can undo it.
void MessageListPage::typeScript(const std::string& script) {
    QTextCursor cursor(txtMsg->document());
    cursor.select(QTextCursor::Document);
    cursor.insertText(shownScript(script));
}

void MessageListPage::compareSoon() {
    if (txtMsg->document()->characterCount() <= charactersComparedAtOnce)
        compare();
    else
        comparison_->start();
}

void MessageListPage::compare() {
    comparison_->stop();
    if (lblNotApplied->showState(isNotApplied()))
        emit notAppliedChanged();
}

std::optional<Item> MessageListPage::shownItem() const {
    return messageNamed(txtMsgName->bytes());
}

bool MessageListPage::isNotApplied() const {
    const std::string* const script = storedScript();
    return script && txtMsg->bytes() != *script;
}

std::vector<std::string> MessageListPage::editedTexts() const {
    return {txtMsg->bytes()};
}

void MessageListPage::putBack(const std::vector<std::string>& texts) {
    if (texts.size() != 1)
        return;
    typeScript(texts.front());
    btnMsgApply->setEnabled(true); // also after an emptied box
}

void MessageListPage::showItem(Item item) {
    trvMsg->click(QString::fromStdString(keyOf(item)));
}

void MessageListPage::enter(std::size_t line) {
    txtMsg->setFocus(Qt::OtherFocusReason);
    const ScriptPositions positions(*txtMsg->document());
    if (line == 0 || line > positions.lineCount())
        return;
    QTextCursor cursor = txtMsg->textCursor();
    cursor.setPosition(positions.positionOf(line, 1));
    cursor.setPosition(positions.endOfLine(line), QTextCursor::KeepAnchor);
    txtMsg->setTextCursor(cursor);
    txtMsg->centerCursor();
}

bool MessageListPage::hasUnappliedEdits() const {
    return btnMsgApply->isEnabledTo(this);
}

void MessageListPage::btnMsgApply_Click() {
    if (txtMsg->document()->isEmpty())
        txtMsg->setBytes(clearScript);
    const auto message = shownItem();
    const auto changes = message ? storeTexts(project_, *message, editedTexts()) : std::vector<Change>();
    disableUsed(btnMsgApply, txtMsg);
    compare();
    modifiedMark_.SetModified(true);
    if (message)
        emit stored(changes);
}

} // namespace orvista
