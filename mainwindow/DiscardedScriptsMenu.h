#pragma once

#include "mainwindow/DiscardedScripts.h"

#include <QMenu>

namespace orvista {

class MessageListPage;
class Navigator;

/// Edit > Restore Discarded Script: brings scripts back that were thrown away without having been applied.
class DiscardedScriptsMenu final : public QMenu {
    Q_OBJECT
public:
    DiscardedScriptsMenu(MessageListPage& page, Navigator& navigator, QWidget& window);

private:
    void fill();
    void restore(const DiscardedScripts::Entry& entry);

    MessageListPage& page_;
    Navigator& navigator_;
    DiscardedScripts scripts_;
    QDateTime chosen_; ///< when the script chosen last was thrown away
};

} // namespace orvista
