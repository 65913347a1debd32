#include "simulator/forms/FaultsMenu.h"

#include <QInputDialog>

namespace orvista {

namespace {

QAction* addChoice(QMenu& menu, QActionGroup& group, const char* name, const QString& text, int value) {
    QAction* action = menu.addAction(text);
    action->setObjectName(name);
    action->setCheckable(true);
    action->setData(value);
    group.addAction(action);
    return action;
}

void check(const QActionGroup& group, int value) {
    for (QAction* action : group.actions())
        action->setChecked(action->data().toInt() == value);
}

} // namespace

FaultsMenu::FaultsMenu(SimulatedDevice& device, QWidget* parent)
    : QMenu(tr("F&aults"), parent),
      device_(device),
      modbusFaults_(new QActionGroup(this)),
      transferFaults_(new QActionGroup(this)) {
    setToolTipsVisible(true);
    addModbusFaults();
    addTransferFaults();
    connect(this, &QMenu::aboutToShow, this, &FaultsMenu::refresh);
    refresh();
}

template <typename Change>
void FaultsMenu::change(Change change) {
    Faults faults = device_.faults();
    change(faults);
    device_.setFaults(faults);
    refresh();
}

void FaultsMenu::addModbusFaults() {
    addSection(tr("Modbus"));
    const auto add = [this](const char* name, const QString& text, ModbusFault fault) {
        addChoice(*this, *modbusFaults_, name, text, static_cast<int>(fault));
    };
    add("faultNone", tr("&No Fault"), ModbusFault::None);
    add("faultRefuse", tr("&Refuse Connections"), ModbusFault::Refuse);
    add("faultClose", tr("&Close at Once"), ModbusFault::CloseAtOnce);
    add("faultReset", tr("Rese&t at Once"), ModbusFault::Reset);
    add("faultNoAnswer", tr("Do Not &Answer"), ModbusFault::NoAnswer);
    add("faultException", tr("Answer an &Exception"), ModbusFault::Exception);
    add("faultGarbage", tr("Answer &Garbage"), ModbusFault::Garbage);
    connect(modbusFaults_, &QActionGroup::triggered, this, [this](const QAction* action) {
        change(
            [action](Faults& faults) { faults.modbus = static_cast<ModbusFault>(action->data().toInt()); });
    });
    addSeparator();
    exceptionCode_ = addAction({}, this, &FaultsMenu::askExceptionCode);
    exceptionCode_->setObjectName("faultExceptionCode");
    delay_ = addAction({}, this, &FaultsMenu::askDelay);
    delay_->setObjectName("faultDelay");
}

void FaultsMenu::addTransferFaults() {
    addSection(tr("File transfer"));
    file_ = addAction({}, this, &FaultsMenu::askFile);
    file_->setObjectName("faultFile");
    const auto add = [this](const char* name, const QString& text, TransferFault fault) {
        addChoice(*this, *transferFaults_, name, text, static_cast<int>(fault));
    };
    add("faultFileRefuse", tr("&Refuse That File"), TransferFault::Refuse);
    add("faultFileHangUp", tr("&Hang Up in the Middle of It"), TransferFault::HangUp);
    add("faultFileStall", tr("&Stop Responding Halfway"), TransferFault::Stall);
    connect(transferFaults_, &QActionGroup::triggered, this, [this](const QAction* action) {
        change([action](Faults& faults) {
            faults.transfer = static_cast<TransferFault>(action->data().toInt());
        });
    });
}

void FaultsMenu::refresh() {
    const Faults& faults = device_.faults();
    check(*modbusFaults_, static_cast<int>(faults.modbus));
    check(*transferFaults_, static_cast<int>(faults.transfer));
    exceptionCode_->setText(tr("E&xception Code: %1...").arg(faults.exceptionCode));
    delay_->setText(tr("Answer &Delay: %1 ms...").arg(faults.answerDelay));
    file_->setText(faults.failingFile == 0 ? tr("Fa&il at File: None...")
                                           : tr("Fa&il at File: %1...").arg(faults.failingFile));
    transferFaults_->setEnabled(faults.failingFile != 0);
}

void FaultsMenu::askExceptionCode() {
    bool accepted = false;
    const int code =
        QInputDialog::getInt(this, tr("Exception Code"), tr("Code, 1 to 11:"),
                             static_cast<int>(device_.faults().exceptionCode), 1, 11, 1, &accepted);
    if (accepted)
        change([code](Faults& faults) { faults.exceptionCode = static_cast<unsigned>(code); });
}

void FaultsMenu::askDelay() {
    bool accepted = false;
    const int delay = QInputDialog::getInt(this, tr("Answer Delay"), tr("Milliseconds:"),
                                           device_.faults().answerDelay, 0, 3'600'000, 100, &accepted);
    if (accepted)
        change([delay](Faults& faults) { faults.answerDelay = delay; });
}

void FaultsMenu::askFile() {
    bool accepted = false;
    const int file =
        QInputDialog::getInt(this, tr("Fail at File"), tr("Number of the file in each transfer, 0 for none:"),
                             device_.faults().failingFile, 0, 100'000, 1, &accepted);
    if (accepted)
        change([file](Faults& faults) { faults.failingFile = file; });
}

} // namespace orvista
