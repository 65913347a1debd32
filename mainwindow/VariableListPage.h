#pragma once

#include "mainwindow/ItemPage.h"
#include "model/Change.h"
#include "model/People.h"

#include <QWidget>

#include <map>
#include <string_view>

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
    /// Apply has stored the shown settings: these changes were made.
    void stored(const std::vector<orvista::Change>& changes);
    /// The user has edited the shown settings.
    void edited();

private:
    QWidget* buildDetails();
    void connectHandlers(Messages& messages);

    void trvVar_NodeClick(QTreeWidgetItem* node);
    void showVariable(Item variable);
    void clearFields();
    /// The boxes that Apply stores, in the order of the shown variable's fields.
    std::vector<ShownBox*> settingBoxes() const;
    void showTexts(const std::vector<std::string>& texts);
    void noteEdit();
    void compare();

    void btnEditVariable_Click();
    void editFloatVariable(std::size_t index);
    void editBooleanVariable(std::size_t index);

    Project& project_;
    ModifiedMark& modifiedMark_;

    ItemTree* trvVar;
    ShownBox* txtVarName;
    ShownBox* txtVarAddr;
    ShownBox* txtVarType;
    std::map<std::string_view, ShownBox*> settings_; ///< by the name of the field
    QPushButton* btnEditVariable;
    QPushButton* btnVarApply;
    NotAppliedLabel* lblNotApplied;
};

} // namespace orvista
