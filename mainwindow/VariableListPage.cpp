#include "mainwindow/VariableListPage.h"

#include "dialogs/frmBoolVarEdit.h"
#include "dialogs/frmFloatVarEdit.h"
#include "mainwindow/Guard.h"
#include "mainwindow/ItemTree.h"
#include "model/Numbers.h"
#include "widgets/FormParts.h"
#include "widgets/NotAppliedLabel.h"
#include "widgets/ShownBox.h"

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
      trvVar(named<ItemTree>(QStringLiteral("trvVar"))),
      txtVarName(named<ShownBox>(QStringLiteral("txtVarName"))),
      txtVarAddr(named<ShownBox>(QStringLiteral("txtVarAddr"))),
      txtVarType(named<ShownBox>(QStringLiteral("txtVarType"))),
      txtVarDefValue(named<ShownBox>(QStringLiteral("txtVarDefValue"))),
      txtVarWidth(named<ShownBox>(QStringLiteral("txtVarWidth"))),
      txtVarPrec(named<ShownBox>(QStringLiteral("txtVarPrec"))),
      txtVarOnStr(named<ShownBox>(QStringLiteral("txtVarOnStr"))),
      txtVarOffStr(named<ShownBox>(QStringLiteral("txtVarOffStr"))),
      btnEditVariable(namedButton(QStringLiteral("btnEditVariable"), QStringLiteral("Edit Variable"))),
      btnVarApply(namedButton(QStringLiteral("btnVarApply"), QStringLiteral("Apply"))),
      lblNotApplied(new NotAppliedLabel) {
    trvVar->setAccessibleName(tr("Variables"));
    auto* splitter = new QSplitter;
    splitter->addWidget(trvVar);
    splitter->addWidget(buildDetails());
    splitter->setStretchFactor(1, 1);
    splitter->setChildrenCollapsible(false);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(splitter);
    connectHandlers(messages);
}

QWidget* VariableListPage::buildDetails() {
    btnEditVariable->setEnabled(false);
    btnEditVariable->setToolTip(tr("Edit the shown variable in a dialog"));
    btnVarApply->setEnabled(false);
    btnVarApply->setToolTip(tr("Store the shown settings in the project"));
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(lblNotApplied, 1);
    buttons->addWidget(btnEditVariable);
    buttons->addWidget(btnVarApply);

    auto* form = new QFormLayout;
    form->addRow(labelFor(txtVarName, QStringLiteral("Variable Name:")), txtVarName);
    form->addRow(labelFor(txtVarAddr, QStringLiteral("Variable address:")), txtVarAddr);
    form->addRow(labelFor(txtVarType, QStringLiteral("Variable Type:")), txtVarType);
    form->addRow(labelFor(txtVarDefValue, QStringLiteral("Default value:")), txtVarDefValue);
    form->addRow(labelFor(txtVarWidth, QStringLiteral("Width:")), txtVarWidth);
    form->addRow(labelFor(txtVarPrec, QStringLiteral("Precision:")), txtVarPrec);
    form->addRow(labelFor(txtVarOnStr, QStringLiteral("\"ON\" message:")), txtVarOnStr);
    form->addRow(labelFor(txtVarOffStr, QStringLiteral("\"OFF\" message")), txtVarOffStr);

    auto* details = new QWidget;
    auto* layout = new QVBoxLayout(details);
    layout->setContentsMargins(layout->spacing(), 0, 0, 0);
    layout->addLayout(form);
    layout->addLayout(buttons);
    layout->addStretch(1);
    return details;
}

void VariableListPage::connectHandlers(Messages& messages) {
    connect(trvVar, &ItemTree::NodeClick, this, &VariableListPage::trvVar_NodeClick);
    connectGuarded(messages, btnEditVariable, &QPushButton::clicked, this,
                   &VariableListPage::btnEditVariable_Click);
    connectGuarded(messages, btnVarApply, &QPushButton::clicked, this, &VariableListPage::btnVarApply_Click);
}

std::size_t VariableListPage::shownIndex(const ItemKind& kind) const {
    return kind.indexOfName(txtVarName->bytes()).value();
}

void VariableListPage::trvVar_NodeClick(QTreeWidgetItem* node) {
    const std::string key = nodeKey(*node).toStdString();
    const auto floatIndex = floatVariables.indexOfKey(key);
    const auto booleanIndex = booleanVariables.indexOfKey(key);
    if (floatIndex)
        showFloatVariable(*floatIndex);
    else if (booleanIndex)
        showBooleanVariable(*booleanIndex);
    else
        clearFields();
    btnEditVariable->setEnabled(floatIndex || booleanIndex);
    btnVarApply->setEnabled(false);
    compare();
}

void VariableListPage::showFloatVariable(std::size_t index) {
    clearFields();
    txtVarName->setBytes(floatVariables.name(index));
    txtVarAddr->setBytes(decimalText(floatVariables.address(project_, index)));
    txtVarType->setBytes(floatType);
    showFloatSettings(project_.RegVar.at(index));
}

void VariableListPage::showBooleanVariable(std::size_t index) {
    clearFields();
    txtVarName->setBytes(booleanVariables.name(index));
    txtVarAddr->setBytes(decimalText(booleanVariables.address(project_, index)));
    txtVarType->setBytes(booleanType);
    showBooleanSettings(project_.CoilVar.at(index));
}

void VariableListPage::clearFields() {
    for (ShownBox* box : {txtVarName, txtVarAddr, txtVarType, txtVarDefValue, txtVarWidth, txtVarPrec,
                          txtVarOnStr, txtVarOffStr})
        box->clear();
}

void VariableListPage::showFloatSettings(const FloatVariable& variable) {
    txtVarWidth->setBytes(variable.width);
    txtVarPrec->setBytes(variable.precision);
    txtVarDefValue->setBytes(variable.defaultValue);
}

void VariableListPage::showBooleanSettings(const BooleanVariable& variable) {
    txtVarOnStr->setBytes(variable.onText);
    txtVarOffStr->setBytes(variable.offText);
    txtVarDefValue->setBytes(variable.defaultValue);
}

void VariableListPage::refresh() {
    const std::string type = txtVarType->bytes();
    if (type == booleanType)
        showBooleanSettings(project_.CoilVar.at(shownIndex(booleanVariables)));
    else if (type == floatType)
        showFloatSettings(project_.RegVar.at(shownIndex(floatVariables)));
    btnVarApply->setEnabled(false);
    compare();
}

void VariableListPage::btnEditVariable_Click() {
    const std::string type = txtVarType->bytes();
    if (type == booleanType)
        editBooleanVariable();
    else if (type == floatType)
        editFloatVariable();
}

void VariableListPage::editFloatVariable() {
    frmFloatVarEdit editor(project_, window());
    editor.InitContent(static_cast<int>(shownIndex(floatVariables)));
    editor.exec();
    if (editor.IsCancel)
        return;
    txtVarWidth->setBytes(editor.VarWidth);
    txtVarPrec->setBytes(editor.VarPrecision);
    txtVarDefValue->setBytes(editor.VarDefValue);
    noteEdit();
}

void VariableListPage::editBooleanVariable() {
    frmBoolVarEdit editor(project_, window());
    editor.InitContent(static_cast<int>(shownIndex(booleanVariables)));
    editor.exec();
    if (editor.IsCanceled)
        return;
    txtVarOnStr->setBytes(editor.VarOnStr);
    txtVarOffStr->setBytes(editor.VarOFFStr);
    txtVarDefValue->setBytes(editor.VarDefValue);
    noteEdit();
}

void VariableListPage::noteEdit() {
    btnVarApply->setEnabled(true);
    compare();
    emit edited();
}

std::vector<ShownBox*> VariableListPage::settingBoxes() const {
    if (txtVarType->bytes() == floatType)
        return {txtVarDefValue, txtVarWidth, txtVarPrec};
    if (txtVarType->bytes() == booleanType)
        return {txtVarDefValue, txtVarOnStr, txtVarOffStr};
    return {};
}

std::vector<std::string> VariableListPage::editedTexts() const {
    std::vector<std::string> texts;
    for (const ShownBox* const box : settingBoxes())
        texts.push_back(box->bytes());
    return texts;
}

void VariableListPage::putBack(const std::vector<std::string>& texts) {
    const std::vector<ShownBox*> boxes = settingBoxes();
    if (texts.empty() || texts.size() != boxes.size())
        return;
    for (std::size_t i = 0; i < boxes.size(); ++i)
        boxes[i]->setBytes(texts[i]);
    noteEdit();
}

void VariableListPage::compare() {
    if (lblNotApplied->showState(isNotApplied()))
        emit notAppliedChanged();
}

std::optional<Item> VariableListPage::shownItem() const {
    return variableNamed(txtVarName->bytes());
}

bool VariableListPage::isNotApplied() const {
    const std::string type = txtVarType->bytes();
    const std::string defaultValue = txtVarDefValue->bytes();
    if (type == booleanType) {
        const BooleanVariable& stored = project_.CoilVar.at(shownIndex(booleanVariables));
        return defaultValue != stored.defaultValue || txtVarOnStr->bytes() != stored.onText ||
               txtVarOffStr->bytes() != stored.offText;
    }
    if (type == floatType) {
        const FloatVariable& stored = project_.RegVar.at(shownIndex(floatVariables));
        return defaultValue != stored.defaultValue || txtVarWidth->bytes() != stored.width ||
               txtVarPrec->bytes() != stored.precision;
    }
    return false;
}

void VariableListPage::showItem(Item item) {
    trvVar->click(QString::fromStdString(keyOf(item)));
}

void VariableListPage::enter(std::size_t /*line*/) {
    trvVar->setFocus(Qt::OtherFocusReason);
}

bool VariableListPage::hasUnappliedEdits() const {
    return btnVarApply->isEnabledTo(this);
}

void VariableListPage::btnVarApply_Click() {
    const std::string type = txtVarType->bytes();
    ItemState before;
    if (type == booleanType) {
        BooleanVariable& variable = project_.CoilVar.at(shownIndex(booleanVariables));
        before = {nameOf(*shownItem()), variable};
        variable.defaultValue = txtVarDefValue->bytes();
        variable.onText = txtVarOnStr->bytes();
        variable.offText = txtVarOffStr->bytes();
    } else if (type == floatType) {
        FloatVariable& variable = project_.RegVar.at(shownIndex(floatVariables));
        before = {nameOf(*shownItem()), variable};
        variable.defaultValue = txtVarDefValue->bytes();
        variable.width = txtVarWidth->bytes();
        variable.precision = txtVarPrec->bytes();
    } else {
        return;
    }
    disableUsed(btnVarApply, btnEditVariable);
    compare();
    modifiedMark_.SetModified(true);
    emit stored(before);
}

} // namespace orvista
