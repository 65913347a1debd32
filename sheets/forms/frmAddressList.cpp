#include "sheets/forms/frmAddressList.h"

#include "items/PlcNames.h"
#include "model/Quotation.h"
#include "widgets/FormParts.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace orvista {

frmAddressList::frmAddressList(QWidget* parent)
    : QDialog(parent),
      txtAddressPrefix(named<QLineEdit>(QStringLiteral("txtAddressPrefix"))),
      chkAddressUsed(named<QCheckBox>(QStringLiteral("chkAddressUsed"), tr("Only &used"))),
      lblAddressPrefix(named<QLabel>(QStringLiteral("lblAddressPrefix"))) {
    setObjectName(QStringLiteral("frmAddressList"));
    setWindowTitle(tr("Export Address List"));
    txtAddressPrefix->setToolTip(
        tr("Before each label or name in Structured Text and PLCopen XML, such as LINE3_"));
    widenTo(txtAddressPrefix, static_cast<int>(longestPlcPrefix) + 4);
    chkAddressUsed->setToolTip(tr("Only variables that a message shows, and messages that draw"));
    lblAddressPrefix->setTextFormat(Qt::PlainText);
    lblAddressPrefix->setWordWrap(true);
    auto* const label = labelFor(txtAddressPrefix, tr("Prefix:"));
    label->setText(tr("&Prefix:"));
    auto* const boxes = new QFormLayout;
    boxes->addRow(label, txtAddressPrefix);
    boxes->addRow(nullptr, lblAddressPrefix);
    boxes->addRow(nullptr, chkAddressUsed);
    const OkCancelBar buttons(this);
    btnOK = buttons.btnOK;
    btnOK->setToolTip(tr("Choose the file"));
    auto* const layout = new QVBoxLayout(this);
    layout->addLayout(boxes);
    layout->addStretch(1);
    layout->addLayout(buttons.layout);
    connect(txtAddressPrefix, &QLineEdit::textChanged, this, &frmAddressList::txtAddressPrefix_Change);
    connect(btnOK, &QPushButton::clicked, this, &frmAddressList::accept);
    connect(buttons.btnCancel, &QPushButton::clicked, this, &frmAddressList::reject);
    txtAddressPrefix_Change();
    txtAddressPrefix->setFocus();
}

void frmAddressList::txtAddressPrefix_Change() {
    const std::string prefix = txtAddressPrefix->text().toStdString();
    const std::string fault = plcPrefixFault(prefix);
    lblAddressPrefix->setText(fault.empty() ? tr("Names begin with it in Structured Text and PLCopen XML.")
                                            : QString::fromStdString(quotation(prefix) + " " + fault));
    btnOK->setEnabled(fault.empty());
}

void frmAddressList::accept() {
    if (!btnOK->isEnabled())
        return;
    Prefix = txtAddressPrefix->text().toStdString();
    UsedOnly = chkAddressUsed->isChecked();
    IsCanceled = false;
    QDialog::accept();
}

} // namespace orvista
