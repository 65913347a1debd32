#include "dialogs/frmBoolVarEdit.h"

#include "model/Item.h"
#include "model/Numbers.h"
#include "model/VariableEditing.h"
#include "widgets/DeviceLineEdit.h"
#include "widgets/DropDownList.h"
#include "widgets/FormParts.h"

#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace orvista {

namespace {

constexpr int messageCharacters = 32;

} // namespace

frmBoolVarEdit::frmBoolVarEdit(const Project& project, QWidget* parent)
    : QDialog(parent),
      project_(project),
      txtVarAddr(shownOnlyBox("txtVarAddr")),
      txtVarName(shownOnlyBox("txtVarName")),
      cbDefVal(choiceList("cbDefVal", booleanDefaultChoices, initialBooleanDefaultPosition)),
      txtVarON(new DeviceLineEdit),
      txtVarOFF(new DeviceLineEdit) {
    setObjectName("frmBoolVarEdit");
    setWindowTitle("Boolean Variable Editing");
    cbDefVal->setToolTip("State of the variable until it is first written");
    txtVarON->setObjectName("txtVarON");
    txtVarON->explain("Text shown for state 1");
    txtVarOFF->setObjectName("txtVarOFF");
    txtVarOFF->explain("Text shown for state 0");
    widenTo(txtVarON, messageCharacters);
    const OkCancelBar buttons(this);

    auto* fields = new QFormLayout;
    fields->addRow(labelFor(txtVarAddr, "Variable address:"), txtVarAddr);
    fields->addRow(labelFor(txtVarName, "Variable Name:"), txtVarName);
    fields->addRow(labelFor(cbDefVal, "Default value:"), cbDefVal);
    fields->addRow(labelFor(txtVarON, "\"ON\" message:"), txtVarON);
    fields->addRow(labelFor(txtVarOFF, "\"OFF\" message"), txtVarOFF);
    auto* rows = new QVBoxLayout(this);
    rows->addLayout(fields);
    rows->addStretch();
    rows->addLayout(buttons.layout);

    connect(buttons.btnOK, &QPushButton::clicked, this, &frmBoolVarEdit::btnOK_Click);
    connect(buttons.btnCancel, &QPushButton::clicked, this, &frmBoolVarEdit::reject);
    cbDefVal->setFocus();
}

void frmBoolVarEdit::InitContent(int index) {
    const auto position = static_cast<std::size_t>(index);
    const BooleanVariable& variable = project_.CoilVar.at(position);
    txtVarName->setText(QString::fromStdString(nameOf({Kind::Boolean, position})));
    txtVarAddr->setText(QString::fromStdString(decimalText(addressOf(project_, {Kind::Boolean, position}))));
    cbDefVal->setCurrentIndex(static_cast<int>(booleanDefaultPosition(variable.defaultValue)));
    txtVarON->setBytes(variable.onText);
    txtVarOFF->setBytes(variable.offText);
}

void frmBoolVarEdit::btnOK_Click() {
    IsCanceled = 0;
    VarOnStr = txtVarON->bytes();
    VarOFFStr = txtVarOFF->bytes();
    VarDefValue = cbDefVal->currentText().toStdString();
    accept();
}

void frmBoolVarEdit::reject() {
    IsCanceled = -1;
    QDialog::reject();
}

} // namespace orvista
