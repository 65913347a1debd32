#pragma once

#include <QObject>
#include <QPointer>

class QMainWindow;

namespace orvista {

class Commands;
class DisplayPreview;
class FindingsPanel;
class MessageListPage;
class ModbusSettingPage;
class Navigator;
class PanelDock;
struct Project;
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
    ProjectTools(const Project& project, Commands& commands, const Pages& pages, QMainWindow& window);

    MenuRow editMenu();
    MenuRow viewMenu();
    MenuRow toolsMenu();
    /// Has the checkable entries tell what is shown, once they are there.
    void followShown();

    /// The project in memory is another, or may be.
    void projectChanged();

private:
    void addPanels();
    void connectPages(const Pages& pages);
    void miViewPanels_Click();
    void miToolsCheck_Click();

    const Project& project_;
    Commands& commands_;
    DisplayPreview& preview_;
    PanelDock* dock_;
    Navigator* navigator_;
    QPointer<FindingsPanel> findings_; ///< null until it is opened
};

} // namespace orvista
