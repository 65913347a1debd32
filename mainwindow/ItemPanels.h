#pragma once

#include "items/MessageDigest.h"
#include "items/forms/ItemPanel.h"
#include "mainwindow/Commands.h"

#include <QObject>
#include <QPointer>

#include <functional>
#include <vector>

namespace orvista {

class DisplayPreview;
class MessagesPanel;
class Navigator;
class PanelDock;
class VariablesPanel;

/// The panels "Messages" and "Variables" of the dock, and what opens them.
class ItemPanels final : public QObject {
    Q_OBJECT
public:
    /// \param preview whose columns and clock the pictures go by
    ItemPanels(const Project& project, FolderCheck& check, DisplayPreview& preview, Navigator& navigator,
               PanelDock& dock);

    std::vector<CommandRow> viewEntries();
    void miViewMessages_Click();
    /// Opens the tab of the messages with the cursor in its filter.
    void enterMessagesFilter();

    /// The panel on the screen; null where it is none of these.
    ItemPanel* shown() const;
    /// Digests of all messages as they are now.
    const MessageDigests& digests();

    void projectChanged();
    void markNotApplied();

signals:
    /// A panel was built.
    void made(orvista::ItemPanel& panel);

private:
    ItemSources sources();
    std::vector<ItemPanel*> panels() const;
    void connectPanel(ItemPanel& panel);
    QWidget* makeMessages();
    QWidget* makeVariables();
    void miViewVariables_Click();

    const Project& project_;
    FolderCheck& check_;
    DisplayPreview& preview_;
    Navigator& navigator_;
    PanelDock& dock_;
    MessageDigests digests_;
    QPointer<MessagesPanel> messages_; ///< null until it is opened
    QPointer<VariablesPanel> variables_;
};

} // namespace orvista
