#include "mainwindow/SystemPage.h"

#include "link/DisplayAddress.h"
#include "mainwindow/TcpTesterPage.h"
#include "widgets/FormParts.h"
#include "widgets/ShownBox.h"

#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QRadioButton>

#include <algorithm>

namespace orvista {

namespace {

/// Lets all boxes begin in one column, whichever frame they are in.
void alignBoxes(const QWidget& page) {
    QList<QLabel*> labels = page.findChildren<QLabel*>();
    labels.removeIf([](const QLabel* label) { return !label->buddy(); });
    int widest = 0;
    for (const QLabel* label : labels)
        widest = std::max(widest, label->sizeHint().width());
    for (QLabel* label : labels)
        label->setMinimumWidth(widest);
}

} // namespace

SystemPage::SystemPage(Project& project, ModifiedMark& modifiedMark, TcpTesterPage& testerPage,
                       QWidget* parent)
    : QWidget(parent),
      project_(project),
      modifiedMark_(modifiedMark),
      testerPage_(testerPage),
      txtSystemName(named<ShownBox>(QStringLiteral("txtSystemName"))),
      optEthernet(named<QRadioButton>(QStringLiteral("optEthernet"), QStringLiteral("TCP/IP"))),
      txtSystemIP(named<DeviceLineEdit>(QStringLiteral("txtSystemIP"))) {
    QLabel* const lblSystemCfgName = labelFor(txtSystemName, QStringLiteral("Project Name"));
    lblSystemCfgName->setObjectName(QStringLiteral("lblSystemCfgName"));
    auto* nameRow = new QHBoxLayout;
    nameRow->addWidget(lblSystemCfgName);
    nameRow->addWidget(txtSystemName, 1);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(nameRow);
    layout->addWidget(buildCommunicationFrame());
    layout->addWidget(buildDeviceFrame());
    layout->addStretch(1);
    alignBoxes(*this);

    connect(optEthernet, &QRadioButton::clicked, this, &SystemPage::optEthernet_Click);
    connect(txtSystemIP, &QLineEdit::textChanged, this, &SystemPage::txtSystemIP_Change);
}

QGroupBox* SystemPage::buildCommunicationFrame() {
    optEthernet->setChecked(true);
    optEthernet->setAccessibleDescription(QStringLiteral("Use TCP/IP"));
    txtSystemIP->setToolTip(tr("The device's IP address"));
    auto* txtPort = named<ShownBox>(QStringLiteral("txtPort"));
    txtPort->setText(QString::number(modbusTcp.port));
    txtPort->setToolTip(tr("The device's Modbus/TCP port; it is always %1").arg(modbusTcp.port));

    auto* typeRow = new QHBoxLayout;
    typeRow->addWidget(optEthernet);
    typeRow->addWidget(new QLabel(QStringLiteral("Use TCP/IP")), 1);

    auto* frame =
        named<QGroupBox>(QStringLiteral("frameCommunication"), QStringLiteral("Communication Type"));
    auto* form = new QFormLayout(frame);
    form->addRow(typeRow);
    form->addRow(labelFor(txtSystemIP, QStringLiteral("IP :")), txtSystemIP);
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
    if (txtSystemIP->bytes() == project_.IP)
        txtSystemIP_Change(); // Qt tells of changed texts only, but every write counts here
    else
        txtSystemIP->setBytes(project_.IP);
    optEthernet->setChecked(true);
}

void SystemPage::showProjectName(const std::string& name) {
    txtSystemName->setText(QString::fromStdString(name));
}

void SystemPage::typeAddress(const QString& address) {
    txtSystemIP->setText(address);
}

void SystemPage::optEthernet_Click() {
    optEthernet->setChecked(true);
    txtSystemIP->setEnabled(true);
}

void SystemPage::txtSystemIP_Change() {
    project_.IP = txtSystemIP->bytes();
    testerPage_.showDeviceAddress(project_.IP);
    modifiedMark_.SetModified(true);
}

} // namespace orvista
