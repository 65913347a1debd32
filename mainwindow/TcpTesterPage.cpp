#include "mainwindow/TcpTesterPage.h"

#include "dialogs/FormParts.h"
#include "dialogs/controls/DropDownList.h"
#include "dialogs/controls/ShownBox.h"
#include "mainwindow/Guard.h"
#include "mainwindow/PageParts.h"
#include "mainwindow/TesterActions.h"
#include "model/Numbers.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>

namespace orvista {

namespace {

constexpr int boxesPerRow = 10;

QPushButton* updateButton(const QString& name, const QString& toolTip) {
    auto* button = named<QPushButton>(name, QStringLiteral("Update"));
    button->setToolTip(toolTip);
    return button;
}

/// A list of addresses that also takes any other one. It neither completes nor collects what is typed: a
/// completed address would switch another coil than the one typed.
DropDownList* addressList(const QString& name) {
    auto* list = named<DropDownList>(name);
    list->setEditable(true);
    list->setInsertPolicy(QComboBox::NoInsert);
    list->setCompleter(nullptr);
    return list;
}

void fill(DropDownList& list, std::size_t count, std::int64_t (*address)(const Project&, std::size_t),
          const Project& project) {
    QStringList entries;
    for (std::size_t i = 0; i < count; ++i)
        entries << QString::fromStdString(decimalText(address(project, i)));
    list.clear();
    list.addItems(entries);
    list.setCurrentIndex(0);
}

/// A frame with its fields at the top and its button in the corner below them.
QGroupBox* framed(const QString& name, const QString& caption, QFormLayout* fields, QPushButton* button) {
    auto* frame = named<QGroupBox>(name, caption);
    auto* layout = new QVBoxLayout(frame);
    layout->addLayout(fields);
    layout->addStretch(1);
    layout->addWidget(button, 0, Qt::AlignRight);
    return frame;
}

template <std::size_t count>
std::array<bool, count> ticked(const std::array<QCheckBox*, count>& boxes) {
    std::array<bool, count> on{};
    for (std::size_t i = 0; i < count; ++i)
        on[i] = boxes[i]->checkState() != Qt::Unchecked;
    return on;
}

} // namespace

TcpTesterPage::TcpTesterPage(Messages& messages, QWidget* parent)
    : QWidget(parent),
      txtIP_(named<ShownBox>(QStringLiteral("txtIP"))),
      txtEMsgAddr_(named<QLineEdit>(QStringLiteral("txtEMsgAddr"), QStringLiteral("300"))),
      txtRMsgAddr_(named<QLineEdit>(QStringLiteral("txtRMsgAddr"), QStringLiteral("320"))),
      btnEmgMsgUpdate_(
          updateButton(QStringLiteral("btnEmgMsgUpdate"), tr("Switch the 20 emergency messages as ticked"))),
      btnRegMsgUpdate_(
          updateButton(QStringLiteral("btnRegMsgUpdate"), tr("Switch the 40 regular messages as ticked"))),
      cbDIAddr_(addressList(QStringLiteral("cbDIAddr"))),
      chkUpdateCoil_(named<QCheckBox>(QStringLiteral("chkUpdateCoil"), QStringLiteral("Enable"))),
      cmdUpdateCoil_(updateButton(QStringLiteral("cmdUpdateCoil"), tr("Write the coil"))),
      cbAIAddr_(addressList(QStringLiteral("cbAIAddr"))),
      txtFloat_(named<QLineEdit>(QStringLiteral("txtFloat"), QStringLiteral("0"))),
      cmdUpdateReg_(updateButton(QStringLiteral("cmdUpdateReg"), tr("Write the float variable"))) {
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(buildAddressRow());
    layout->addWidget(
        buildMessageFrame({QStringLiteral("frameEmergency"), QStringLiteral("Emergency Message"),
                           tr("Emergency message %1"), txtEMsgAddr_, btnEmgMsgUpdate_},
                          QStringLiteral("chkEmergMsg"), chkEmergMsg_));
    layout->addWidget(buildMessageFrame({QStringLiteral("frameFunction"), QStringLiteral("Regular Message"),
                                         tr("Regular message %1"), txtRMsgAddr_, btnRegMsgUpdate_},
                                        QStringLiteral("chkRegMsg"), chkRegMsg_));
    auto* lastRow = new QHBoxLayout;
    lastRow->addWidget(buildCoilFrame(), 1);
    lastRow->addWidget(buildRegisterFrame(), 1);
    layout->addLayout(lastRow);
    layout->addStretch(1);
    connectHandlers(messages);
}

QBoxLayout* TcpTesterPage::buildAddressRow() {
    txtIP_->setToolTip(tr("The device's address, as entered on the System page"));
    QLabel* const Label1 = labelFor(txtIP_, QStringLiteral("IP :"));
    Label1->setObjectName(QStringLiteral("Label1"));
    auto* row = new QHBoxLayout;
    row->addWidget(Label1);
    row->addWidget(txtIP_, 1);
    return row;
}

template <std::size_t count>
QGroupBox* TcpTesterPage::buildMessageFrame(const MessageFrame& parts, const QString& boxName,
                                            std::array<QCheckBox*, count>& boxes) {
    auto* grid = new QGridLayout;
    for (int i = 0; i < static_cast<int>(count); ++i) {
        auto* box = named<QCheckBox>(arrayName(boxName, i), QString::number(i + 1));
        box->setToolTip(parts.boxToolTip.arg(i + 1));
        box->setAccessibleName(box->toolTip());
        grid->addWidget(box, i / boxesPerRow, i % boxesPerRow);
        boxes[static_cast<std::size_t>(i)] = box;
    }
    auto* addressRow = new QHBoxLayout;
    addressRow->addWidget(labelFor(parts.address, QStringLiteral("Start Address")));
    addressRow->addWidget(parts.address);
    addressRow->addStretch(1);
    addressRow->addWidget(parts.update);

    auto* frame = named<QGroupBox>(parts.name, parts.caption);
    auto* layout = new QVBoxLayout(frame);
    layout->addLayout(grid);
    layout->addLayout(addressRow);
    return frame;
}

QGroupBox* TcpTesterPage::buildCoilFrame() {
    auto* form = new QFormLayout;
    form->addRow(labelFor(cbDIAddr_, QStringLiteral("Address")), cbDIAddr_);
    form->addRow(labelFor(chkUpdateCoil_, QStringLiteral("Coil Value")), chkUpdateCoil_);
    return framed(QStringLiteral("frameUpdateCoil"), QStringLiteral("Update Coil"), form, cmdUpdateCoil_);
}

QGroupBox* TcpTesterPage::buildRegisterFrame() {
    auto* form = new QFormLayout;
    form->addRow(labelFor(cbAIAddr_, QStringLiteral("Address")), cbAIAddr_);
    form->addRow(labelFor(txtFloat_, QStringLiteral("Register Value")), txtFloat_);
    return framed(QStringLiteral("frameUpdateReg"), QStringLiteral("Update Register"), form, cmdUpdateReg_);
}

void TcpTesterPage::connectHandlers(Messages& messages) {
    connectGuarded(messages, btnEmgMsgUpdate_, &QPushButton::clicked, this,
                   &TcpTesterPage::btnEmgMsgUpdate_Click);
    connectGuarded(messages, btnRegMsgUpdate_, &QPushButton::clicked, this,
                   &TcpTesterPage::btnRegMsgUpdate_Click);
    connectGuarded(messages, cmdUpdateCoil_, &QPushButton::clicked, this,
                   &TcpTesterPage::cmdUpdateCoil_Click);
    connectGuarded(messages, cmdUpdateReg_, &QPushButton::clicked, this, &TcpTesterPage::cmdUpdateReg_Click);
}

void TcpTesterPage::showDeviceAddress(const std::string& address) {
    txtIP_->setBytes(address);
}

void TcpTesterPage::showMessageAddresses(const QString& emergencyStart, const QString& regularStart) {
    txtEMsgAddr_->setText(emergencyStart);
    txtRMsgAddr_->setText(regularStart);
}

void TcpTesterPage::fillVariableAddresses(const Project& project) {
    fill(*cbAIAddr_, floatVariableCount, &floatVariableAddress, project);
    fill(*cbDIAddr_, booleanVariableCount, &booleanVariableAddress, project);
}

void TcpTesterPage::setEnabled(UpdateButton button, bool enabled) {
    switch (button) {
    case UpdateButton::btnEmgMsgUpdate:
        return btnEmgMsgUpdate_->setEnabled(enabled);
    case UpdateButton::btnRegMsgUpdate:
        return btnRegMsgUpdate_->setEnabled(enabled);
    case UpdateButton::cmdUpdateReg:
        return cmdUpdateReg_->setEnabled(enabled);
    case UpdateButton::cmdUpdateCoil:
        return cmdUpdateCoil_->setEnabled(enabled);
    }
}

void TcpTesterPage::btnEmgMsgUpdate_Click() {
    if (actions_)
        actions_->updateEmergencyMessages(txtEMsgAddr_->text().toStdString(), ticked(chkEmergMsg_));
}

void TcpTesterPage::btnRegMsgUpdate_Click() {
    if (actions_)
        actions_->updateRegularMessages(txtRMsgAddr_->text().toStdString(), ticked(chkRegMsg_));
}

void TcpTesterPage::cmdUpdateCoil_Click() {
    if (actions_)
        actions_->updateCoil(cbDIAddr_->currentText().toStdString(), chkUpdateCoil_->isChecked());
}

void TcpTesterPage::cmdUpdateReg_Click() {
    if (actions_)
        actions_->updateRegister(cbAIAddr_->currentText().toStdString(), txtFloat_->text().toStdString());
}

} // namespace orvista
