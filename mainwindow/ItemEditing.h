#pragma once

#include "items/CopiedItems.h"
#include "mainwindow/Commands.h"

#include <QObject>

#include <optional>
#include <string>
#include <vector>

namespace orvista {

class ItemPanel;
class ItemPanels;
class Navigator;
class ProjectChanges;

/// Cut, Copy, Paste and Clear on the rows that are selected in a panel of items. Their keys are those of the
/// tables; anywhere else, in text boxes above all, they mean what they always do. Replace works on all
/// messages.
class ItemEditing final : public QObject {
    Q_OBJECT
public:
    ItemEditing(const Project& project, ProjectChanges& changes, Commands& commands, ItemPanels& panels,
                const Navigator& navigator, QWidget& window);

    std::vector<CommandRow> entries();
    /// Gives the entries their keys, once they are there.
    void bindKeys();

signals:
    /// Something to say to the user in one line; an empty text takes the line away.
    void notice(const QString& text);
    /// Items of a project in that folder (UTF-8) were pasted into this one.
    void pastedFrom(const std::string& folder);

private:
    void addTo(ItemPanel& panel);
    std::vector<std::string> selectedItems();
    std::optional<CopiedItems> clipboardItems();
    void copy(const std::vector<std::string>& items);
    void say(const QString& text);
    void sayNothing();

    void miEditCut_Click();
    void miEditCopy_Click();
    void miEditPaste_Click();
    void miEditClear_Click();
    void miEditReplace_Click();

    const Project& project_;
    ProjectChanges& changes_;
    Commands& commands_;
    ItemPanels& panels_;
    const Navigator& navigator_;
    QWidget& window_;
    bool said_ = false;
};

} // namespace orvista
