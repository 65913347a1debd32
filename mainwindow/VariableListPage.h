#pragma once

#include "mainwindow/ItemPage.h"
#include "model/ItemKind.h"
#include "model/ItemState.h"
#include "model/People.h"

#include <QWidget>

class QPushButton;
class QTreeWidgetItem;

namespace orvista {

class ItemTree;
class NotAppliedLabel;
class ShownBox;

/// Shows one variable at a time, lets the user edit it in its dialog, and stores it with Apply. The shown
/// variable is read back from the page's own type and name boxes.
class VariableListPage final : public QWidget, public ItemPage {
    Q_OBJECT
public:
    VariableListPage(Project& project, ModifiedMark& modifiedMark, Messages& messages,
                     QWidget* parent = nullptr);

    ItemTree& tree() { return *trvVar; }
    /// The shown variable's settings from the model; name, address and type stay. Discards unapplied edits.
    void refresh();

    std::optional<Item> shownItem() const override;
    /// True while a field differs from the variable's record.
    bool isNotApplied() const override;
    std::vector<std::string> editedTexts() const override;
    void putBack(const std::vector<std::string>& texts) override;
    void showItem(Item item) override;
    void showAnew() override { refresh(); }
    void enter(std::size_t line) override;

    /// True when edited settings wait for Apply.
    bool hasUnappliedEdits() const;
    void btnVarApply_Click();

signals:
    void notAppliedChanged();
    /// Apply has stored the shown settings; the variable held this before.
    void stored(const ItemState& before);
    /// The user has edited the shown settings.
    void edited();

private:
    QWidget* buildDetails();
    void connectHandlers(Messages& messages);
    std::size_t shownIndex(const ItemKind& kind) const;

    void trvVar_NodeClick(QTreeWidgetItem* node);
    void showFloatVariable(std::size_t index);
    void showBooleanVariable(std::size_t index);
    void clearFields();
    /// Those that Apply stores.
    std::vector<ShownBox*> settingBoxes() const;
    void noteEdit();
    void compare();
    void showFloatSettings(const FloatVariable& variable);
    void showBooleanSettings(const BooleanVariable& variable);

    void btnEditVariable_Click();
    void editFloatVariable();
    void editBooleanVariable();

    Project& project_;
    ModifiedMark& modifiedMark_;

    ItemTree* trvVar;
    ShownBox* txtVarName;
    ShownBox* txtVarAddr;
    ShownBox* txtVarType;
    ShownBox* txtVarDefValue;
    ShownBox* txtVarWidth;
    ShownBox* txtVarPrec;
    ShownBox* txtVarOnStr;
    ShownBox* txtVarOffStr;
    QPushButton* btnEditVariable;
    QPushButton* btnVarApply;
    NotAppliedLabel* lblNotApplied;
};

} // namespace orvista
