#include "mainwindow/ModbusSettingPage.h"

#include "mainwindow/Guard.h"
#include "mainwindow/TcpTesterPage.h"
#include "model/Numbers.h"
#include "model/Text.h"
#include "widgets/FormParts.h"
#include "widgets/NotAppliedLabel.h"
#include "widgets/ShownBox.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include <algorithm>
#include <array>

namespace orvista {

namespace {

/// \throws Overflow
std::int32_t addressOf(const QLineEdit& box) {
    return toWhole<std::int32_t>(leadingNumber(box.text().toStdString()));
}

bool holdsDigits(const QLineEdit& box) {
    return GenenalModule::IsAllDigits(box.text().toStdString());
}

QString digits(std::int64_t value) {
    return QString::fromStdString(decimalText(value));
}

} // namespace

ModbusSettingPage::ModbusSettingPage(Project& project, ModifiedMark& modifiedMark, Messages& messages,
                                     TcpTesterPage& testerPage, QWidget* parent)
    : QWidget(parent),
      project_(project),
      modifiedMark_(modifiedMark),
      testerPage_(testerPage),
      emergency_(makeBoxes(QStringLiteral("txtAltAddr"), QStringLiteral("txtNewAltAddr"))),
      regular_(makeBoxes(QStringLiteral("txtStdAddr"), QStringLiteral("txtNewStdAddr"))),
      float_(makeBoxes(QStringLiteral("txtAIAddr"), QStringLiteral("txtNewAIAddr"))),
      boolean_(makeBoxes(QStringLiteral("txtDIAddr"), QStringLiteral("txtNewDIAddr"))),
      btnModBusApply(namedButton(QStringLiteral("btnModBusApply"), QStringLiteral("Apply"))),
      btnRestoreDefault(namedButton(QStringLiteral("btnRestoreDefault"), QStringLiteral("Restore Default"))),
      lblNotApplied(new NotAppliedLabel) {
    auto* layout = new QVBoxLayout(this);
    // The emergency block comes first, since typing its address fills the regular one in.
    layout->addWidget(
        buildFrame(QStringLiteral("Emergency Message Start Address (20 Continuous 0xxxx Coil Address)"),
                   tr("Emergency messages"), emergency_));
    layout->addWidget(
        buildFrame(QStringLiteral("Regular Message Start Address ( 40 Continuous 0xxxx Coil Address)"),
                   tr("Regular messages"), regular_));
    layout->addWidget(
        buildFrame(QStringLiteral("Float Variable Start Address (64 Continuous 4xxxx Register Address)"),
                   tr("Float variables"), float_));
    layout->addWidget(
        buildFrame(QStringLiteral("Boolean Variable Start Address (32 Continuous 0xxxx Boolean Address)"),
                   tr("Boolean variables"), boolean_));
    layout->addLayout(buildButtons());
    layout->addStretch(1);
    connectHandlers(messages);
}

ModbusSettingPage::AddressBoxes ModbusSettingPage::makeBoxes(const QString& currentName,
                                                             const QString& newName) {
    return {named<ShownBox>(currentName), named<QLineEdit>(newName)};
}

QGroupBox* ModbusSettingPage::buildFrame(const QString& caption, const QString& items,
                                         const AddressBoxes& block) {
    auto* frame = new QGroupBox(caption);
    auto* row = new QHBoxLayout(frame);
    row->addWidget(labelFor(block.current, QStringLiteral("Current Address:")));
    row->addWidget(block.current, 1);
    row->addSpacing(row->spacing());
    row->addWidget(labelFor(block.next, QStringLiteral("New Address:")));
    row->addWidget(block.next, 1);
    // The labels are the same in all four frames.
    block.current->setAccessibleName(tr("%1, current address").arg(items));
    block.next->setAccessibleName(tr("%1, new address").arg(items));
    return frame;
}

QBoxLayout* ModbusSettingPage::buildButtons() {
    btnModBusApply->setEnabled(false);
    btnModBusApply->setToolTip(tr("Store the new addresses in the project"));
    btnRestoreDefault->setToolTip(tr("Store the addresses 300, 320, 100 and 100 in the project"));
    auto* row = new QHBoxLayout;
    row->addWidget(lblNotApplied, 1);
    row->addWidget(btnModBusApply);
    row->addWidget(btnRestoreDefault);
    return row;
}

void ModbusSettingPage::connectHandlers(Messages& messages) {
    connect(emergency_.next, &QLineEdit::textChanged, this, &ModbusSettingPage::txtNewAltAddr_Change);
    connect(float_.next, &QLineEdit::textChanged, this, &ModbusSettingPage::txtNewAIAddr_Change);
    connect(boolean_.next, &QLineEdit::textChanged, this, &ModbusSettingPage::txtNewDIAddr_Change);
    for (const AddressBoxes* block : {&emergency_, &regular_, &float_, &boolean_})
        connect(block->next, &QLineEdit::textChanged, this, [this] {
            compare();
            emit edited();
        });
    connectGuarded(messages, btnModBusApply, &QPushButton::clicked, this,
                   &ModbusSettingPage::btnModBusApply_Click);
    connectGuarded(messages, btnRestoreDefault, &QPushButton::clicked, this,
                   &ModbusSettingPage::btnRestoreDefault_Click);
}

void ModbusSettingPage::setUp() {
    project_.ResetAddressMap();
    refresh();
}

void ModbusSettingPage::refresh() {
    showCurrentAddresses();
    for (const AddressBoxes* block : {&emergency_, &regular_, &float_, &boolean_})
        block->next->clear();
}

void ModbusSettingPage::showCurrentAddresses() {
    emergency_.current->setText(digits(project_.AlertMessage));
    regular_.current->setText(digits(project_.RegularMessage));
    float_.current->setText(digits(project_.AnalogInput));
    boolean_.current->setText(digits(project_.DigitalInput));
}

void ModbusSettingPage::showAnew() {
    showCurrentAddresses();
    fillTestPage();
}

void ModbusSettingPage::fillTestPage() {
    testerPage_.showMessageAddresses(emergency_.current->text(), regular_.current->text());
    testerPage_.fillVariableAddresses(project_);
}

void ModbusSettingPage::compare() {
    if (lblNotApplied->showState(isNotApplied()))
        emit notAppliedChanged();
}

std::optional<Item> ModbusSettingPage::shownItem() const {
    return Item();
}

bool ModbusSettingPage::isNotApplied() const {
    const auto blocks = {&emergency_, &regular_, &float_, &boolean_};
    return std::any_of(blocks.begin(), blocks.end(),
                       [](const AddressBoxes* block) { return !block->next->text().isEmpty(); });
}

std::vector<std::string> ModbusSettingPage::editedTexts() const {
    std::vector<std::string> texts;
    for (const AddressBoxes* block : {&emergency_, &regular_, &float_, &boolean_})
        texts.push_back(block->next->text().toStdString());
    return texts;
}

void ModbusSettingPage::putBack(const std::vector<std::string>& texts) {
    // The emergency start comes first: typing it fills the regular one in.
    const std::array blocks{&emergency_, &regular_, &float_, &boolean_};
    if (texts.size() != blocks.size())
        return;
    for (std::size_t i = 0; i < blocks.size(); ++i)
        blocks[i]->next->setText(QString::fromStdString(texts[i]));
}

void ModbusSettingPage::showItem(Item /*item*/) {}

void ModbusSettingPage::enter(std::size_t /*line*/) {
    emergency_.next->setFocus(Qt::OtherFocusReason);
}

bool ModbusSettingPage::hasUnappliedEdits() const {
    return btnModBusApply->isEnabledTo(this);
}

bool ModbusSettingPage::holdsNewAddresses() const {
    return holdsDigits(*emergency_.next) && holdsDigits(*float_.next) && holdsDigits(*boolean_.next);
}

void ModbusSettingPage::btnModBusApply_Click() {
    const std::int32_t emergencyStart = addressOf(*emergency_.next);
    const std::int32_t regularStart = addressOf(*regular_.next);
    const std::int32_t floatStart = addressOf(*float_.next);
    const std::int32_t booleanStart = addressOf(*boolean_.next);
    const std::array starts{decimalText(floatStart), decimalText(booleanStart), decimalText(emergencyStart),
                            decimalText(regularStart)}; // as fieldsOf() has them
    const std::vector<Change> changes = storeTexts(project_, Item(), starts);

    disableUsed(btnModBusApply, emergency_.next);
    modifiedMark_.SetModified(true);
    for (const AddressBoxes* block : {&emergency_, &regular_, &float_, &boolean_})
        block->current->setText(block->next->text());
    for (const AddressBoxes* block : {&emergency_, &regular_, &float_, &boolean_})
        block->next->clear();
    fillTestPage();
    emit stored(changes);
}

void ModbusSettingPage::btnRestoreDefault_Click() {
    const std::vector<Change> changes = changesBetween(project_, Project(), Item());
    setUp();
    fillTestPage();
    modifiedMark_.SetModified(true);
    emit stored(changes);
}

void ModbusSettingPage::txtNewAltAddr_Change() {
    enableApplyForDigits();
    if (!holdsDigits(*emergency_.next))
        return;
    try {
        regular_.next->setText(digits(regularStartAfter(addressOf(*emergency_.next))));
    } catch (const Overflow&) {
        // Typing never raises a box; Apply tells of an address that does not fit.
        return;
    }
}

void ModbusSettingPage::txtNewAIAddr_Change() {
    enableApplyForDigits();
}

void ModbusSettingPage::txtNewDIAddr_Change() {
    enableApplyForDigits();
}

void ModbusSettingPage::enableApplyForDigits() {
    if (holdsNewAddresses())
        btnModBusApply->setEnabled(true);
}

} // namespace orvista
