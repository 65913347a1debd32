#include "dialogs/frmFloatVarEdit.h"

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

frmFloatVarEdit::frmFloatVarEdit(const Project& project, QWidget* parent)
    : QDialog(parent),
      project_(project),
      txtVarAddr(shownOnlyBox("txtVarAddr")),
      txtVarName(shownOnlyBox("txtVarName")),
      txtVarDefValue(new DeviceLineEdit),
      cbWidth(choiceList("cbWidth", widthChoices, initialWidthPosition)),
      cbPrecision(choiceList("cbPrecision", precisionChoices, initialPrecisionPosition)) {
    setObjectName("frmFloatVarEdit");
    setWindowTitle("Float Variable Editing");
    txtVarDefValue->setObjectName("txtVarDefValue");
    txtVarDefValue->explain("Value of the variable until it is first written: a number below 1.8E308");
    cbWidth->setToolTip("Characters on the display, sign and point included");
    cbPrecision->setToolTip("Digits after the decimal point");
    const OkCancelBar buttons(this);

    auto* rows = new QVBoxLayout(this);
    rows->addLayout(fields());
    rows->addLayout(notes());
    rows->addStretch();
    rows->addLayout(buttons.layout);

    connect(buttons.btnOK, &QPushButton::clicked, this, &frmFloatVarEdit::btnOK_Click);
    connect(buttons.btnCancel, &QPushButton::clicked, this, &frmFloatVarEdit::reject);
    txtVarDefValue->setFocus();
}

QLayout* frmFloatVarEdit::fields() {
    auto* form = new QFormLayout;
    form->addRow(labelFor(txtVarAddr, "Variable address:"), txtVarAddr);
    form->addRow(labelFor(txtVarName, "Variable Name:"), txtVarName);
    form->addRow(labelFor(txtVarDefValue, "Default value:"), txtVarDefValue);
    form->addRow(labelFor(cbWidth, "Width:"), cbWidth);
    form->addRow(labelFor(cbPrecision, "Precision:"), cbPrecision);
    return form;
}

QLayout* frmFloatVarEdit::notes() {
    auto* lines = new QVBoxLayout;
    for (const char* text : {"Note:", "1. If set \"Width\" as 2 , \"Precision\" should be always set as 0",
                             "2. If set \"Width\" as 8 , \"Precision\" can not be set as 0"})
        lines->addWidget(new QLabel(text));
    return lines;
}

void frmFloatVarEdit::InitContent(int index) {
    const auto position = static_cast<std::size_t>(index);
    const FloatVariable& variable = project_.RegVar.at(position);
    txtVarName->setText(QString::fromStdString(nameOf({Kind::Float, position})));
    txtVarAddr->setText(QString::fromStdString(decimalText(addressOf(project_, {Kind::Float, position}))));
    txtVarDefValue->setBytes(variable.defaultValue);
    cbWidth->setCurrentIndex(static_cast<int>(widthPosition(variable.width)));
    cbPrecision->setCurrentIndex(static_cast<int>(precisionPosition(variable.precision)));
}

void frmFloatVarEdit::btnOK_Click() {
    try {
        VarDefValue = normalisedDefault(txtVarDefValue->bytes());
    } catch (const Overflow&) {
        txtVarDefValue->setFocus();
        txtVarDefValue->selectAll();
        return;
    }
    VarWidth = cbWidth->currentText().toStdString();
    VarPrecision = precisionForWidth(VarWidth, cbPrecision->currentText().toStdString());
    IsCancel = 0;
    accept();
}

void frmFloatVarEdit::reject() {
    IsCancel = -1;
    QDialog::reject();
}

} // namespace orvista
