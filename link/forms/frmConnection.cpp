#include "link/forms/frmConnection.h"

#include "link/DisplayAddress.h"
#include "model/Text.h"
#include "widgets/FormParts.h"

#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace orvista {

namespace {

QLabel* namedLabelFor(QLineEdit* box, const QString& name, const QString& text) {
    QLabel* const label = labelFor(box, text);
    label->setObjectName(name);
    return label;
}

} // namespace

frmConnection::frmConnection(const QString& deviceAddress, QWidget* parent)
    : QDialog(parent),
      txtIP(named<QLineEdit>(QStringLiteral("txtIP"), deviceAddress)),
      txtPort(named<QLineEdit>(QStringLiteral("txtPort"), QString::number(fileTransfer.port))),
      btnOK(namedButton(QStringLiteral("btnOK"), QStringLiteral("Connect"))),
      btnCancel(namedButton(QStringLiteral("btnCancel"), QStringLiteral("Cancel"))) {
    setObjectName(QStringLiteral("frmConnection"));
    setWindowTitle(QStringLiteral("Upload/Download IP Address"));
    setModal(true);
    txtIP->setToolTip(tr("The device's IP address or name"));
    txtPort->setToolTip(tr("The port of the device's file transfer, up to 32767"));
    takeFont();
    buildLayout();
    connect(txtIP, &QLineEdit::textChanged, this, &frmConnection::enableConnect);
    connect(txtPort, &QLineEdit::textChanged, this, &frmConnection::enableConnect);
    connect(btnOK, &QPushButton::clicked, this, &frmConnection::btnOK_Click);
    connect(btnCancel, &QPushButton::clicked, this, &frmConnection::btnCancel_Click);
    enableConnect();
}

void frmConnection::takeFont() {
    // Elsewhere the system's own font is the better one to read.
    const QString family = QStringLiteral("Tahoma");
    if (!QFontDatabase::hasFamily(family))
        return;
    QFont tahoma = font();
    tahoma.setFamily(family);
    setFont(tahoma);
}

void frmConnection::buildLayout() {
    auto* const form = new QFormLayout(this);
    form->addRow(namedLabelFor(txtIP, QStringLiteral("Label1"), QStringLiteral("IP Address")), txtIP);
    form->addRow(namedLabelFor(txtPort, QStringLiteral("Label2"), QStringLiteral("Port")), txtPort);
    auto* const buttons = new QDialogButtonBox;
    buttons->addButton(btnOK, QDialogButtonBox::AcceptRole);
    buttons->addButton(btnCancel, QDialogButtonBox::RejectRole);
    form->addRow(buttons);
    btnOK->setDefault(true);
    // Room for the caption, and for an address of any version.
    setMinimumWidth(52 * fontMetrics().averageCharWidth());
}

void frmConnection::enableConnect() {
    const bool hasAddress = !trimBlanks(txtIP->text().toStdString()).empty();
    btnOK->setEnabled(hasAddress && GenenalModule::IsAllDigits(txtPort->text().toStdString()));
}

void frmConnection::btnOK_Click() {
    IsCanceled = false;
    accept();
}

void frmConnection::btnCancel_Click() {
    IsCanceled = true;
    reject();
}

} // namespace orvista
