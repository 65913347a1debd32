#include "mainwindow/TcpTesterPage.h"

#include "link/TesterActions.h"
#include "mainwindow/Guard.h"
#include "model/Numbers.h"
#include "widgets/DropDownList.h"
#include "widgets/FormParts.h"
#include "widgets/ShownBox.h"

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
    auto* button = namedButton(name, QStringLiteral("Update"));
    button->setToolTip(toolTip);
    // Four buttons have the same caption.
    button->setAccessibleName(toolTip);
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

void fill(DropDownList& list, Kind kind, const Project& project) {
    QStringList entries;
    for (std::size_t i = 0; i < rowOf(kind).count; ++i)
        entries << QString::fromStdString(decimalText(addressOf(project, {kind, i})));
    list.clear();
    list.addItems(entries);
    list.setCurrentIndex(0);
}

/// A frame with its fields at the top and its button in the corner below them.
QGroupBox* framedFields(const QString& name, const QString& caption, QFormLayout* fields,
                        QPushButton* button) {
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
      frames_(new QBoxLayout(QBoxLayout::TopToBottom)),
      valueFrames_(new QBoxLayout(QBoxLayout::LeftToRight)),
      txtIP(named<ShownBox>(QStringLiteral("txtIP"))),
      txtEMsgAddr(named<QLineEdit>(QStringLiteral("txtEMsgAddr"), QStringLiteral("300"))),
      txtRMsgAddr(named<QLineEdit>(QStringLiteral("txtRMsgAddr"), QStringLiteral("320"))),
      btnEmgMsgUpdate(
          updateButton(QStringLiteral("btnEmgMsgUpdate"), tr("Switch the 20 emergency messages as ticked"))),
      btnRegMsgUpdate(
          updateButton(QStringLiteral("btnRegMsgUpdate"), tr("Switch the 40 regular messages as ticked"))),
      cbDIAddr(addressList(QStringLiteral("cbDIAddr"))),
      chkUpdateCoil(named<QCheckBox>(QStringLiteral("chkUpdateCoil"), QStringLiteral("Enable"))),
      cmdUpdateCoil(updateButton(QStringLiteral("cmdUpdateCoil"), tr("Write the coil"))),
      cbAIAddr(addressList(QStringLiteral("cbAIAddr"))),
      txtFloat(named<QLineEdit>(QStringLiteral("txtFloat"), QStringLiteral("0"))),
      cmdUpdateReg(updateButton(QStringLiteral("cmdUpdateReg"), tr("Write the float variable"))) {
    auto* const messageFrames = new QVBoxLayout;
    messageFrames->addWidget(
        buildMessageFrame({QStringLiteral("frameEmergency"), QStringLiteral("Emergency Message"),
                           tr("Emergency message %1"), txtEMsgAddr, btnEmgMsgUpdate},
                          QStringLiteral("chkEmergMsg"), chkEmergMsg));
    messageFrames->addWidget(
        buildMessageFrame({QStringLiteral("frameFunction"), QStringLiteral("Regular Message"),
                           tr("Regular message %1"), txtRMsgAddr, btnRegMsgUpdate},
                          QStringLiteral("chkRegMsg"), chkRegMsg));
    valueFrames_->addWidget(buildCoilFrame(), 1);
    valueFrames_->addWidget(buildRegisterFrame(), 1);
    frames_->addLayout(messageFrames, 1);
    frames_->addLayout(valueFrames_);
    auto* const layout = new QVBoxLayout(this);
    layout->addLayout(buildAddressRow());
    layout->addLayout(frames_);
    layout->addStretch(1);
    connectHandlers(messages);
}

int TcpTesterPage::leastWidth(QBoxLayout::Direction direction) const {
    const QSize messages = frames_->itemAt(0)->minimumSize();
    const int coil = valueFrames_->itemAt(0)->minimumSize().width();
    const int reg = valueFrames_->itemAt(1)->minimumSize().width();
    const QMargins margins = layout()->contentsMargins();
    const int frames = direction == QBoxLayout::LeftToRight
                           ? messages.width() + frames_->spacing() + std::max(coil, reg)
                           : std::max(messages.width(), coil + frames_->spacing() + reg);
    return margins.left() + frames + margins.right();
}

QSize TcpTesterPage::minimumSizeHint() const {
    return {leastWidth(QBoxLayout::TopToBottom), QWidget::minimumSizeHint().height()};
}

void TcpTesterPage::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    const bool isWide = width() >= leastWidth(QBoxLayout::LeftToRight);
    frames_->setDirection(isWide ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    valueFrames_->setDirection(isWide ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
}

QBoxLayout* TcpTesterPage::buildAddressRow() {
    txtIP->setToolTip(tr("The device's address, as entered on the System page"));
    QLabel* const Label1 = labelFor(txtIP, QStringLiteral("IP :"));
    Label1->setObjectName(QStringLiteral("Label1"));
    auto* row = new QHBoxLayout;
    row->addWidget(Label1);
    row->addWidget(txtIP, 1);
    return row;
}

template <std::size_t count>
QGroupBox* TcpTesterPage::buildMessageFrame(const MessageFrame& parts, const QString& boxName,
                                            std::array<QCheckBox*, count>& boxes) {
    auto* grid = new QGridLayout;
    for (std::size_t i = 0; i < count; ++i) {
        auto* box = named<QCheckBox>(arrayName(boxName, i), QString::number(i + 1));
        box->setToolTip(parts.boxToolTip.arg(i + 1));
        box->setAccessibleName(box->toolTip());
        grid->addWidget(box, static_cast<int>(i) / boxesPerRow, static_cast<int>(i) % boxesPerRow);
        boxes[i] = box;
    }
    auto* addressRow = new QHBoxLayout;
    addressRow->addWidget(labelFor(parts.address, QStringLiteral("Start Address")));
    parts.address->setAccessibleName(tr("%1, start address").arg(parts.caption));
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
    form->addRow(labelFor(cbDIAddr, QStringLiteral("Address")), cbDIAddr);
    cbDIAddr->setAccessibleName(tr("Coil, address"));
    form->addRow(labelFor(chkUpdateCoil, QStringLiteral("Coil Value")), chkUpdateCoil);
    return framedFields(QStringLiteral("frameUpdateCoil"), QStringLiteral("Update Coil"), form,
                        cmdUpdateCoil);
}

QGroupBox* TcpTesterPage::buildRegisterFrame() {
    auto* form = new QFormLayout;
    form->addRow(labelFor(cbAIAddr, QStringLiteral("Address")), cbAIAddr);
    cbAIAddr->setAccessibleName(tr("Register, address"));
    form->addRow(labelFor(txtFloat, QStringLiteral("Register Value")), txtFloat);
    return framedFields(QStringLiteral("frameUpdateReg"), QStringLiteral("Update Register"), form,
                        cmdUpdateReg);
}

void TcpTesterPage::connectHandlers(Messages& messages) {
    connectGuarded(messages, btnEmgMsgUpdate, &QPushButton::clicked, this,
                   &TcpTesterPage::btnEmgMsgUpdate_Click);
    connectGuarded(messages, btnRegMsgUpdate, &QPushButton::clicked, this,
                   &TcpTesterPage::btnRegMsgUpdate_Click);
    connectGuarded(messages, cmdUpdateCoil, &QPushButton::clicked, this, &TcpTesterPage::cmdUpdateCoil_Click);
    connectGuarded(messages, cmdUpdateReg, &QPushButton::clicked, this, &TcpTesterPage::cmdUpdateReg_Click);
}

void TcpTesterPage::showDeviceAddress(const std::string& address) {
    txtIP->setBytes(address);
}

void TcpTesterPage::showMessageAddresses(const QString& emergencyStart, const QString& regularStart) {
    txtEMsgAddr->setText(emergencyStart);
    txtRMsgAddr->setText(regularStart);
}

void TcpTesterPage::fillVariableAddresses(const Project& project) {
    fill(*cbAIAddr, Kind::Float, project);
    fill(*cbDIAddr, Kind::Boolean, project);
}

void TcpTesterPage::tickMessage(Item message, bool on) {
    QCheckBox* const box =
        message.kind == Kind::Emergency ? chkEmergMsg.at(message.index) : chkRegMsg.at(message.index);
    box->setChecked(on);
}

QPushButton* TcpTesterPage::pushButton(UpdateButton button) const {
    switch (button) {
    case UpdateButton::btnEmgMsgUpdate:
        return btnEmgMsgUpdate;
    case UpdateButton::btnRegMsgUpdate:
        return btnRegMsgUpdate;
    case UpdateButton::cmdUpdateReg:
        return cmdUpdateReg;
    case UpdateButton::cmdUpdateCoil:
        return cmdUpdateCoil;
    }
    return nullptr;
}

void TcpTesterPage::setEnabled(UpdateButton button, bool enabled) {
    QPushButton* const push = pushButton(button);
    const bool losesFocus = !enabled && window()->focusWidget() == push;
    push->setEnabled(enabled);
    // Qt hands the focus of a disabled button on. The pressed one gets it back when the request is through,
    // so that the keyboard can press it again, unless the user has gone on to something else.
    if (losesFocus) {
        if (!pressed_)
            pressed_ = push;
        focusHandedTo_ = window()->focusWidget();
    } else if (enabled && push == pressed_) {
        if (window()->focusWidget() == focusHandedTo_)
            push->setFocus();
        pressed_ = nullptr;
    }
    // The last of the four.
    if (button == UpdateButton::cmdUpdateCoil && isSending_ == enabled) {
        isSending_ = !enabled;
        emit sendingChanged(isSending_);
    }
}

void TcpTesterPage::btnEmgMsgUpdate_Click() {
    if (actions_)
        actions_->updateEmergencyMessages(txtEMsgAddr->text().toStdString(), ticked(chkEmergMsg));
    emit messagesUpdated();
}

void TcpTesterPage::btnRegMsgUpdate_Click() {
    if (actions_)
        actions_->updateRegularMessages(txtRMsgAddr->text().toStdString(), ticked(chkRegMsg));
    emit messagesUpdated();
}

void TcpTesterPage::cmdUpdateCoil_Click() {
    if (actions_)
        actions_->updateCoil(cbDIAddr->currentText().toStdString(), chkUpdateCoil->isChecked());
}

void TcpTesterPage::cmdUpdateReg_Click() {
    if (actions_)
        actions_->updateRegister(cbAIAddr->currentText().toStdString(), txtFloat->text().toStdString());
}

} // namespace orvista
