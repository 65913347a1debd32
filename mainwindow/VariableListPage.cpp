#include "mainwindow/VariableListPage.h"

#include "dialogs/frmBoolVarEdit.h"
#include "dialogs/frmFloatVarEdit.h"
#include "mainwindow/Guard.h"
#include "mainwindow/ItemTree.h"
#include "model/Fields.h"
#include "model/Numbers.h"
#include "widgets/FormParts.h"
#include "widgets/NotAppliedLabel.h"
#include "widgets/ShownBox.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSplitter>

#include <algorithm>
#include <array>

namespace orvista {

namespace {

constexpr const char* floatType = "FLOAT";
constexpr const char* booleanType = "BOOLEAN";

/// The box of a field, and its row of the form.
struct SettingBox {
    std::string_view field;
    QString name;
    QString caption;
};

/// Those that were given; a field without one gets a box of its own name.
SettingBox settingBox(const Field& field) {
    static const std::array given{
        SettingBox{"default", QStringLiteral("txtVarDefValue"), QStringLiteral("Default value:")},
        SettingBox{"width", QStringLiteral("txtVarWidth"), QStringLiteral("Width:")},
        SettingBox{"precision", QStringLiteral("txtVarPrec"), QStringLiteral("Precision:")},
        SettingBox{"on", QStringLiteral("txtVarOnStr"), QStringLiteral("\"ON\" message:")},
        SettingBox{"off", QStringLiteral("txtVarOffStr"), QStringLiteral("\"OFF\" message")}};
    const auto found = std::ranges::find(given, field.name, &SettingBox::field);
    if (found != given.end())
        return *found;
    const QString name = QString::fromUtf8(field.name);
    const QString capitalised = name.left(1).toUpper() + name.mid(1);
    return {field.name, QStringLiteral("txtVar") + capitalised, capitalised + u':'};
}

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
    for (const Kind kind : {Kind::Float, Kind::Boolean}) {
        for (const Field& field : fieldsOf(kind)) {
            const auto [setting, isNew] = settings_.try_emplace(field.name);
            if (!isNew) // both kinds have it
                continue;
            const SettingBox box = settingBox(field);
            setting->second = named<ShownBox>(box.name);
            form->addRow(labelFor(setting->second, box.caption), setting->second);
        }
    }

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

void VariableListPage::trvVar_NodeClick(QTreeWidgetItem* node) {
    const auto variable = itemOfKey(nodeKey(*node).toStdString());
    clearFields();
    if (variable)
        showVariable(*variable);
    btnEditVariable->setEnabled(variable.has_value());
    btnVarApply->setEnabled(false);
    compare();
}

void VariableListPage::showVariable(Item variable) {
    txtVarName->setBytes(nameOf(variable));
    txtVarAddr->setBytes(decimalText(addressOf(project_, variable)));
    txtVarType->setBytes(variable.kind == Kind::Float ? floatType : booleanType);
    showTexts(textsOf(project_, variable));
}

void VariableListPage::clearFields() {
    for (ShownBox* const box : {txtVarName, txtVarAddr, txtVarType})
        box->clear();
    for (const auto& [field, box] : settings_)
        box->clear();
}

void VariableListPage::showTexts(const std::vector<std::string>& texts) {
    const std::vector<ShownBox*> boxes = settingBoxes();
    for (std::size_t i = 0; i < boxes.size(); ++i)
        boxes[i]->setBytes(texts.at(i));
}

void VariableListPage::refresh() {
    if (const auto variable = shownItem())
        showTexts(textsOf(project_, *variable));
    btnVarApply->setEnabled(false);
    compare();
}

void VariableListPage::btnEditVariable_Click() {
    const auto variable = shownItem();
    if (!variable)
        return;
    if (variable->kind == Kind::Float)
        editFloatVariable(variable->index);
    else
        editBooleanVariable(variable->index);
}

void VariableListPage::editFloatVariable(std::size_t index) {
    frmFloatVarEdit editor(project_, window());
    editor.InitContent(static_cast<int>(index));
    editor.exec();
    if (editor.IsCancel)
        return;
    settings_.at("width")->setBytes(editor.VarWidth);
    settings_.at("precision")->setBytes(editor.VarPrecision);
    settings_.at("default")->setBytes(editor.VarDefValue);
    noteEdit();
}

void VariableListPage::editBooleanVariable(std::size_t index) {
    frmBoolVarEdit editor(project_, window());
    editor.InitContent(static_cast<int>(index));
    editor.exec();
    if (editor.IsCanceled)
        return;
    settings_.at("on")->setBytes(editor.VarOnStr);
    settings_.at("off")->setBytes(editor.VarOFFStr);
    settings_.at("default")->setBytes(editor.VarDefValue);
    noteEdit();
}

void VariableListPage::noteEdit() {
    btnVarApply->setEnabled(true);
    compare();
    emit edited();
}

std::vector<ShownBox*> VariableListPage::settingBoxes() const {
    std::vector<ShownBox*> boxes;
    if (const auto variable = shownItem())
        for (const Field& field : fieldsOf(variable->kind))
            boxes.push_back(settings_.at(field.name));
    return boxes;
}

std::vector<std::string> VariableListPage::editedTexts() const {
    std::vector<std::string> texts;
    for (const ShownBox* const box : settingBoxes())
        texts.push_back(box->bytes());
    return texts;
}

void VariableListPage::putBack(const std::vector<std::string>& texts) {
    if (texts.empty() || texts.size() != settingBoxes().size())
        return;
    showTexts(texts);
    noteEdit();
}

void VariableListPage::compare() {
    if (lblNotApplied->showState(isNotApplied()))
        emit notAppliedChanged();
}

std::optional<Item> VariableListPage::shownItem() const {
    const std::string type = txtVarType->bytes();
    const auto variable = variableNamed(txtVarName->bytes());
    const bool isOfType = variable && type == (variable->kind == Kind::Float ? floatType : booleanType);
    return isOfType ? variable : std::nullopt;
}

bool VariableListPage::isNotApplied() const {
    const auto variable = shownItem();
    return variable && editedTexts() != textsOf(project_, *variable);
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
    const auto variable = shownItem();
    if (!variable)
        return;
    const std::vector<Change> changes = storeTexts(project_, *variable, editedTexts());
    disableUsed(btnVarApply, btnEditVariable);
    compare();
    modifiedMark_.SetModified(true);
    emit stored(changes);
}

} // namespace orvista
