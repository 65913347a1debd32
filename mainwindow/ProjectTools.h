#pragma once

#include <QObject>

class QMainWindow;

namespace orvista {

class Commands;
class MessageListPage;
class ModbusSettingPage;
class Navigator;
class PanelDock;
class VariableListPage;
struct MenuRow;

/// What stands beside the pages: the menus Edit, View and Tools, and the panels of the dock.
class ProjectTools final : public QObject {
    Q_OBJECT
public:
    /// The pages that show items.
    struct Pages {
        MessageListPage& messages;
        VariableListPage& variables;
        ModbusSettingPage& addresses;
    };
    ProjectTools(Commands& commands, const Pages& pages, QMainWindow& window);

    MenuRow editMenu();
    MenuRow viewMenu();
    MenuRow toolsMenu();

private:
    Commands& commands_;
    PanelDock* dock_;
    Navigator* navigator_;
};

} // namespace orvista
