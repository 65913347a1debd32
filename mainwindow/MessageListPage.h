#pragma once

#include "display/forms/PreviewClock.h"
#include "items/ProjectNotes.h"
#include "mainwindow/ItemPage.h"
#include "model/Change.h"
#include "model/People.h"

#include <QWidget>

class QPushButton;
class QTreeWidgetItem;

namespace orvista {

class DeviceTextEdit;
class DisplayPreview;
class ItemTree;
class MasterView;
class NotAppliedLabel;
class QuietTimer;
class ScriptUnderlines;
class ShownBox;

/// Shows one message at a time, lets the user edit its script by hand or with the wizard, and stores it with
/// Apply. The shown message is read back from the page's own name box.
class MessageListPage final : public QWidget, public ItemPage {
    Q_OBJECT
public:
    MessageListPage(Project& project, ModifiedMark& modifiedMark, Messages& messages, PreviewClock clock,
                    QWidget* parent = nullptr);

    /// What is noted about the items; must outlive the page.
    void useNotes(const ProjectNotes& notes) { notes_ = &notes; }
    /// How the project is looked at; must outlive the page.
    void useMaster(const MasterView& view);
    /// Its displays or the shown one have changed.
    void followMaster();
    ItemTree& tree() { return *trvMsg; }
    /// The shown message's script from the model. Discards unapplied edits.
    void refresh();
    /// The project was changed, or saved under another name. Keeps unapplied edits.
    void followProject();

    std::optional<Item> shownItem() const override;
    /// True while the box's bytes differ from the stored script, also where Apply is disabled because the box
    /// was emptied.
    bool isNotApplied() const override;
    std::vector<std::string> editedTexts() const override;
    void putBack(const std::vector<std::string>& texts) override;
    void showItem(Item item) override;
    void showAnew() override { refresh(); }
    void enter(std::size_t line) override;
    /// Writes a script over the one in the box, as typing it does.
    void typeScript(const std::string& script);
    DisplayPreview& preview() { return *preview_; }

    /// True when an edited script waits for Apply.
    bool hasUnappliedEdits() const;
    void btnMsgApply_Click();

signals:
    void notAppliedChanged();
    /// Apply has stored the shown script: these changes were made.
    void stored(const std::vector<orvista::Change>& changes);
    /// An edited script of that message was thrown away.
    void discarded(orvista::Item item, const std::string& script);
    /// The script in the box is another.
    void edited();

private:
    QWidget* buildDetails();
    QWidget* buildScriptSplitter();
    void buildUnusedLists();
    void connectHandlers(Messages& messages);
    /// Of the shown message; null when none is shown.
    const std::string* storedScript() const;

    void noteDiscarded(bool differs);
    void trvMsg_NodeClick(QTreeWidgetItem* node);
    void showMessage(Item message);
    void showNothing();
    void txtMsg_Change();
    void compareSoon();
    void compare();
    void btnEditMessage_Click();
    void addScriptPart(const std::string& part);

    Project& project_;
    const ProjectNotes* notes_ = &noNotes();
    const MasterView* master_ = nullptr;
    ModifiedMark& modifiedMark_;

    ItemTree* trvMsg;
    ShownBox* txtMsgName;
    ShownBox* txtMsgSno;
    DeviceTextEdit* txtMsg;
    QPushButton* btnEditMessage;
    QPushButton* btnMsgApply;
    NotAppliedLabel* lblNotApplied;
    QuietTimer* comparison_;
    DisplayPreview* preview_;
    ScriptUnderlines* underlines_;
};

} // namespace orvista
