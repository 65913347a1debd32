#include "mainwindow/VariableListPage.h"

#include "dialogs/FormParts.h"
#include "dialogs/controls/ShownBox.h"
#include "dialogs/frmBoolVarEdit.h"
#include "dialogs/frmFloatVarEdit.h"
#include "mainwindow/Guard.h"
#include "mainwindow/ItemNames.h"
#include "mainwindow/ItemTree.h"
#include "mainwindow/PageParts.h"
#include "model/Numbers.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSplitter>

namespace orvista {

namespace {

constexpr const char* floatType = "FLOAT";
constexpr const char* booleanType = "BOOLEAN";

} // namespace

VariableListPage::VariableListPage(Project& project, ModifiedMark& modifiedMark, Messages& messages,
                                   QWidget* parent)
    : QWidget(parent),
      project_(project),
      modifiedMark_(modifiedMark),
      trvVar_(named<ItemTree>(QStringLiteral("trvVar"))),
      txtVarName_(named<ShownBox>(QStringLiteral("txtVarName"))),
      txtVarAddr_(named<ShownBox>(QStringLiteral("txtVarAddr"))),
      txtVarType_(named<ShownBox>(QStringLiteral("txtVarType"))),
      txtVarDefValue_(named<ShownBox>(QStringLiteral("txtVarDefValue"))),
      txtVarWidth_(named<ShownBox>(QStringLiteral("txtVarWidth"))),
      txtVarPrec_(named<ShownBox>(QStringLiteral("txtVarPrec"))),
      txtVarOnStr_(named<ShownBox>(QStringLiteral("txtVarOnStr"))),
      txtVarOffStr_(named<ShownBox>(QStringLiteral("txtVarOffStr"))),
      btnEditVariable_(
          named<QPushButton>(QStringLiteral("btnEditVariable"), QStringLiteral("Edit Variable"))),
      btnVarApply_(named<QPushButton>(QStringLiteral("btnVarApply"), QStringLiteral("Apply"))) {
    trvVar_->setAccessibleName(tr("Variables"));
    auto* splitter = new QSplitter;
    splitter->addWidget(trvVar_);
    splitter->addWidget(buildDetails());
    splitter->setStretchFactor(1, 1);
    splitter->setChildrenCollapsible(false);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(splitter);
    connectHandlers(messages);
}

QWidget* VariableListPage::buildDetails() {
    btnEditVariable_->setEnabled(false);
    btnEditVariable_->setToolTip(tr("Edit the shown variable in a dialog"));
    btnVarApply_->setEnabled(false);
    btnVarApply_->setToolTip(tr("Store the shown settings in the project"));
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(btnEditVariable_);
    buttons->addWidget(btnVarApply_);

    auto* form = new QFormLayout;
    form->addRow(labelFor(txtVarName_, QStringLiteral("Variable Name:")), txtVarName_);
    form->addRow(labelFor(txtVarAddr_, QStringLiteral("Variable address:")), txtVarAddr_);
    form->addRow(labelFor(txtVarType_, QStringLiteral("Variable Type:")), txtVarType_);
    form->addRow(labelFor(txtVarDefValue_, QStringLiteral("Default value:")), txtVarDefValue_);
    form->addRow(labelFor(txtVarWidth_, QStringLiteral("Width:")), txtVarWidth_);
    form->addRow(labelFor(txtVarPrec_, QStringLiteral("Precision:")), txtVarPrec_);
    form->addRow(labelFor(txtVarOnStr_, QStringLiteral("\"ON\" message:")), txtVarOnStr_);
    form->addRow(labelFor(txtVarOffStr_, QStringLiteral("\"OFF\" message")), txtVarOffStr_);

    auto* details = new QWidget;
    auto* layout = new QVBoxLayout(details);
    layout->setContentsMargins(layout->spacing(), 0, 0, 0);
    layout->addLayout(form);
    layout->addLayout(buttons);
    layout->addStretch(1);
    return details;
}

void VariableListPage::connectHandlers(Messages& messages) {
    connect(trvVar_, &ItemTree::NodeClick, this, &VariableListPage::trvVar_NodeClick);
    connectGuarded(messages, btnEditVariable_, &QPushButton::clicked, this,
                   &VariableListPage::btnEditVariable_Click);
    connectGuarded(messages, btnVarApply_, &QPushButton::clicked, this, &VariableListPage::btnVarApply_Click);
}

std::size_t VariableListPage::shownIndex(std::string_view word) const {
    return indexOfName(txtVarName_->bytes(), word.size());
}

void VariableListPage::trvVar_NodeClick(QTreeWidgetItem* node) {
    const NodeKey key(nodeKey(*node).toStdString());
    const bool isFloat = key.names('F', floatVariableCount);
    const bool isBoolean = key.names('B', booleanVariableCount);
    if (isFloat)
        showFloatVariable(key.index());
    else if (isBoolean)
        showBooleanVariable(key.index());
    else
        clearFields();
    btnEditVariable_->setEnabled(isFloat || isBoolean);
    btnVarApply_->setEnabled(false);
}

void VariableListPage::showFloatVariable(std::size_t index) {
    clearFields();
    txtVarName_->setBytes(itemName(floatVariableName, index));
    txtVarAddr_->setBytes(decimalText(floatVariableAddress(project_, index)));
    txtVarType_->setBytes(floatType);
    showFloatSettings(project_.RegVar.at(index));
}

void VariableListPage::showBooleanVariable(std::size_t index) {
    clearFields();
    txtVarName_->setBytes(itemName(booleanVariableName, index));
    txtVarAddr_->setBytes(decimalText(booleanVariableAddress(project_, index)));
    txtVarType_->setBytes(booleanType);
    showBooleanSettings(project_.CoilVar.at(index));
}

void VariableListPage::clearFields() {
    for (ShownBox* box : {txtVarName_, txtVarAddr_, txtVarType_, txtVarDefValue_, txtVarWidth_, txtVarPrec_,
                          txtVarOnStr_, txtVarOffStr_})
        box->clear();
}

void VariableListPage::showFloatSettings(const FloatVariable& variable) {
    txtVarWidth_->setBytes(variable.width);
    txtVarPrec_->setBytes(variable.precision);
    txtVarDefValue_->setBytes(variable.defaultValue);
}

void VariableListPage::showBooleanSettings(const BooleanVariable& variable) {
    txtVarOnStr_->setBytes(variable.onText);
    txtVarOffStr_->setBytes(variable.offText);
    txtVarDefValue_->setBytes(variable.defaultValue);
}

void VariableListPage::refresh() {
    const std::string type = txtVarType_->bytes();
    if (type == booleanType)
        showBooleanSettings(project_.CoilVar.at(shownIndex(booleanVariableName)));
    else if (type == floatType)
        showFloatSettings(project_.RegVar.at(shownIndex(floatVariableName)));
    btnVarApply_->setEnabled(false);
}

void VariableListPage::btnEditVariable_Click() {
    const std::string type = txtVarType_->bytes();
    if (type == booleanType)
        editBooleanVariable();
    else if (type == floatType)
        editFloatVariable();
}

void VariableListPage::editFloatVariable() {
    frmFloatVarEdit editor(project_, window());
    editor.InitContent(static_cast<int>(shownIndex(floatVariableName)));
    editor.exec();
    if (editor.IsCancel)
        return;
    txtVarWidth_->setBytes(editor.VarWidth);
    txtVarPrec_->setBytes(editor.VarPrecision);
    txtVarDefValue_->setBytes(editor.VarDefValue);
    btnVarApply_->setEnabled(true);
}

void VariableListPage::editBooleanVariable() {
    frmBoolVarEdit editor(project_, window());
    editor.InitContent(static_cast<int>(shownIndex(booleanVariableName)));
    editor.exec();
    if (editor.IsCanceled)
        return;
    txtVarOnStr_->setBytes(editor.VarOnStr);
    txtVarOffStr_->setBytes(editor.VarOFFStr);
    txtVarDefValue_->setBytes(editor.VarDefValue);
    btnVarApply_->setEnabled(true);
}

bool VariableListPage::hasUnappliedEdits() const {
    return btnVarApply_->isEnabledTo(this);
}

void VariableListPage::btnVarApply_Click() {
    const std::string type = txtVarType_->bytes();
    if (type == booleanType) {
        BooleanVariable& variable = project_.CoilVar.at(shownIndex(booleanVariableName));
        variable.defaultValue = txtVarDefValue_->bytes();
        variable.onText = txtVarOnStr_->bytes();
        variable.offText = txtVarOffStr_->bytes();
    } else if (type == floatType) {
        FloatVariable& variable = project_.RegVar.at(shownIndex(floatVariableName));
        variable.defaultValue = txtVarDefValue_->bytes();
        variable.width = txtVarWidth_->bytes();
        variable.precision = txtVarPrec_->bytes();
    } else {
        return;
    }
    btnVarApply_->setEnabled(false);
    modifiedMark_.SetModified(true);
}

} // namespace orvista
