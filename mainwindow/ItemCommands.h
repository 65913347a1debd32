#pragma once

#include "display/forms/PreviewSetting.h"
#include "items/CopiedItems.h"

#include <QKeySequence>
#include <QList>
#include <QObject>

#include <optional>
#include <string>
#include <vector>

class QAction;

namespace orvista {

class ItemPanel;
class Navigator;
class PanelDock;
class ProjectChanges;
class ProjectPanel;
struct Project;

/// Cut, Copy, Paste and Clear on the rows that are selected in a panel of items. Their keys are those of the
/// tables; anywhere else, in text boxes above all, they mean what they always do. Replace works on all
/// messages.
class ItemCommands final : public QObject {
    Q_OBJECT
public:
    ItemCommands(const Project& project, ProjectChanges& changes, const Navigator& navigator, PanelDock& dock,
                 PreviewSettingSource setting, QWidget& window);

    /// Gives the entry the keys, in the tables only, and puts it into their context menus.
    void bindToTables(QAction& entry, QKeySequence::StandardKey keys);

    void miEditCut_Click();
    void miEditCopy_Click();
    void miEditPaste_Click();
    void miEditClear_Click();
    void miEditReplace_Click();

signals:
    /// Items of a project in that folder (UTF-8) were pasted into this one.
    void pastedFrom(const std::string& folder);

private:
    void serve(ProjectPanel& made);
    ItemPanel* shownPanel() const;
    std::vector<Item> selectedItems();
    std::optional<CopiedItems> clipboardItems();
    void copy(const std::vector<Item>& items);
    void showNotice(const QString& text);
    void clearNotice();

    const Project& project_;
    ProjectChanges& changes_;
    const Navigator& navigator_;
    PanelDock& dock_;
    PreviewSettingSource setting_;
    QWidget& window_;
    QList<QAction*> ofTables_;
    bool hasSaid_ = false;
};

} // namespace orvista
