#include "mainwindow/SystemPage.h"

#include "dialogs/FormParts.h"
#include "dialogs/controls/ShownBox.h"
#include "mainwindow/PageParts.h"
#include "mainwindow/TcpTesterPage.h"

#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QRadioButton>

namespace orvista {

SystemPage::SystemPage(Project& project, ModifiedMark& modifiedMark, TcpTesterPage& testerPage,
                       QWidget* parent)
    : QWidget(parent),
      project_(project),
      modifiedMark_(modifiedMark),
      testerPage_(testerPage),
      txtSystemName_(named<ShownBox>(QStringLiteral("txtSystemName"))),
      optEthernet_(named<QRadioButton>(QStringLiteral("optEthernet"), QStringLiteral("TCP/IP"))),
      txtSystemIP_(named<DeviceLineEdit>(QStringLiteral("txtSystemIP"))) {
    QLabel* const lblSystemCfgName = labelFor(txtSystemName_, QStringLiteral("Project Name"));
    lblSystemCfgName->setObjectName(QStringLiteral("lblSystemCfgName"));
    auto* nameRow = new QHBoxLayout;
    nameRow->addWidget(lblSystemCfgName);
    nameRow->addWidget(txtSystemName_, 1);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(nameRow);
    layout->addWidget(buildCommunicationFrame());
    layout->addWidget(buildDeviceFrame());
    layout->addStretch(1);

    connect(optEthernet_, &QRadioButton::clicked, this, &SystemPage::optEthernet_Click);
    connect(txtSystemIP_, &QLineEdit::textChanged, this, &SystemPage::txtSystemIP_Change);
}

QGroupBox* SystemPage::buildCommunicationFrame() {
    optEthernet_->setChecked(true);
    optEthernet_->setAccessibleDescription(QStringLiteral("Use TCP/IP"));
    txtSystemIP_->setToolTip(tr("The device's IP address"));
    auto* txtPort = named<ShownBox>(QStringLiteral("txtPort"));
    txtPort->setText(QStringLiteral("502"));
    txtPort->setToolTip(tr("The device's Modbus/TCP port; it is always 502"));

    auto* typeRow = new QHBoxLayout;
    typeRow->addWidget(optEthernet_);
    typeRow->addWidget(new QLabel(QStringLiteral("Use TCP/IP")), 1);

    auto* frame =
        named<QGroupBox>(QStringLiteral("frameCommunication"), QStringLiteral("Communication Type"));
    auto* form = new QFormLayout(frame);
    form->addRow(typeRow);
    form->addRow(labelFor(txtSystemIP_, QStringLiteral("IP :")), txtSystemIP_);
    form->addRow(labelFor(txtPort, QStringLiteral("Port")), txtPort);
    return frame;
}

QGroupBox* SystemPage::buildDeviceFrame() {
    auto* Text1 = named<ShownBox>(QStringLiteral("Text1"));
    Text1->setText(QStringLiteral("Ulvo LX-400D"));

    auto* frame = named<QGroupBox>(QStringLiteral("frameDeviceConfig"), QStringLiteral("Device Setting"));
    auto* form = new QFormLayout(frame);
    form->addRow(labelFor(Text1, QStringLiteral("Device Name")), Text1);
    return frame;
}

void SystemPage::refresh() {
    showProjectName(project_.ProjName);
    if (txtSystemIP_->bytes() == project_.IP)
        txtSystemIP_Change(); // Qt tells of changed texts only, but every write counts here
    else
        txtSystemIP_->setBytes(project_.IP);
    optEthernet_->setChecked(true);
}

void SystemPage::showProjectName(const std::string& name) {
    txtSystemName_->setText(QString::fromStdString(name));
}

void SystemPage::optEthernet_Click() {
    optEthernet_->setChecked(true);
    txtSystemIP_->setEnabled(true);
}

void SystemPage::txtSystemIP_Change() {
    project_.IP = txtSystemIP_->bytes();
    testerPage_.showDeviceAddress(project_.IP);
    modifiedMark_.SetModified(true);
}

} // namespace orvista
