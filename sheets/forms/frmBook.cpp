#include "sheets/forms/frmBook.h"

#include "widgets/FormParts.h"

#include <QCheckBox>
#include <QPushButton>
#include <QVBoxLayout>

namespace orvista {

frmBook::frmBook(QWidget* parent)
    : QDialog(parent),
      chkBookWidest(named<QCheckBox>(QStringLiteral("chkBookWidest"), tr("&Widest values, too"))),
      chkBookUsed(named<QCheckBox>(QStringLiteral("chkBookUsed"), tr("Only &used addresses"))) {
    setObjectName(QStringLiteral("frmBook"));
    setWindowTitle(tr("Export Message Book"));
    chkBookWidest->setToolTip(
        tr("A second picture, with the widest values, of each page that has variables, time or date"));
    chkBookUsed->setToolTip(
        tr("In the address list only variables that a message shows, and messages that draw"));
    const OkCancelBar buttons(this);
    btnOK = buttons.btnOK;
    btnOK->setToolTip(tr("Choose the file"));
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(chkBookWidest);
    layout->addWidget(chkBookUsed);
    layout->addStretch(1);
    layout->addLayout(buttons.layout);
    connect(btnOK, &QPushButton::clicked, this, &frmBook::accept);
    connect(buttons.btnCancel, &QPushButton::clicked, this, &frmBook::reject);
    chkBookWidest->setFocus();
}

void frmBook::accept() {
    Widest = chkBookWidest->isChecked();
    UsedOnly = chkBookUsed->isChecked();
    IsCanceled = false;
    QDialog::accept();
}

} // namespace orvista
