#pragma once

#include "model/ItemKind.h"
#include "model/People.h"

#include <QWidget>

class QPushButton;
class QTreeWidgetItem;

namespace orvista {

class ItemTree;
class ShownBox;

/// Shows one variable at a time, lets the user edit it in its dialog, and stores it with Apply. The shown
/// variable is read back from the page's own type and name boxes.
class VariableListPage final : public QWidget {
    Q_OBJECT
public:
    VariableListPage(Project& project, ModifiedMark& modifiedMark, Messages& messages,
                     QWidget* parent = nullptr);

    ItemTree& tree() { return *trvVar; }
    /// The shown variable's settings from the model; name, address and type stay. Discards unapplied edits.
    void refresh();

    /// True when edited settings wait for Apply.
    bool hasUnappliedEdits() const;
    void btnVarApply_Click();

private:
    QWidget* buildDetails();
    void connectHandlers(Messages& messages);
    std::size_t shownIndex(const ItemKind& kind) const;

    void trvVar_NodeClick(QTreeWidgetItem* node);
    void showFloatVariable(std::size_t index);
    void showBooleanVariable(std::size_t index);
    void clearFields();
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
};

} // namespace orvista
