#pragma once

#include "tools/tour/Stage.h"

#include <QObject>

namespace orvista::tour {

/// The open project at a glance: its items get names, a message is found, copied and taken back, a text
/// replaced in all messages. What is changed is undone, from the menu and by key, and saved. For a while the
/// project is a master for two displays.
class TablesTour final : public QObject {
    Q_OBJECT
public:
    explicit TablesTour(Stage& stage) : stage_(stage) {}

private slots:
    void namesItems();
    void listsAllMessages();
    void findsAMessage();
    void copiesAMessage();
    void replacesAText();
    void listsAllVariables();
    void takesItAllBack();
    void handsTablesOver();
    void takesAnApplyBackByKey();
    void showsAMaster();

private:
    /// Makes the project the master of that list, or of none.
    void nameMasterList(const QString& path);

    Stage& stage_;
};

} // namespace orvista::tour
