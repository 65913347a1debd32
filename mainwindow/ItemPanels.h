#pragma once

#include "exchange/MessageDigest.h"
#include "exchange/forms/ItemPanel.h"
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
    /// Opens the tab of the messages with the cursor in its filter.
    void enterMessagesFilter();

    void projectChanged();
    void markNotApplied();

private:
    ItemSources sources();
    void connectPanel(ItemPanel& panel);
    QWidget* makeMessages();
    QWidget* makeVariables();
    void miViewMessages_Click();
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
