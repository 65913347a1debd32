#pragma once

#include "check/FolderCheck.h"
#include "mainwindow/ComparisonTools.h"

#include <QObject>
#include <QPointer>

#include <cstdint>
#include <string>

class QMainWindow;

namespace orvista {

class Commands;
class DiscardedScriptsMenu;
class DisplayPreview;
class FindingsPanel;
class ItemEditing;
class ItemPanels;
class MessageListPage;
class ModbusSettingPage;
class MonitorTools;
class Navigator;
class PanelDock;
class ProjectChanges;
struct Project;
class TcpTesterPage;
class UndoEntries;
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
        TcpTesterPage& tester;
    };
    /// \param changes the way in which whatever stands here changes the project
    /// \param modbusPort where the display speaks Modbus
    ProjectTools(const Project& project, ProjectChanges& changes, Commands& commands, const Pages& pages,
                 ComparisonTools::World world, std::uint16_t modbusPort, QMainWindow& window);

    MenuRow editMenu();
    MenuRow viewMenu();
    /// \param ofFiles stand after the check
    MenuRow toolsMenu(std::vector<CommandRow> ofFiles);
    /// Has the entries tell what is shown and what can be undone, once they are there.
    void followStates();

    Navigator& navigator() { return *navigator_; }
    PanelDock& dock() { return *dock_; }

    /// The project in memory is another, or may be.
    void projectChanged();

signals:
    /// The project got items of one in that folder (UTF-8).
    void itemsCameFrom(const std::string& folder);

private:
    void addPanels();
    void connectPages(const Pages& pages);
    void miViewPanels_Click();
    void miToolsCheck_Click();

    const Project& project_;
    ProjectChanges& changes_;
    Commands& commands_;
    DisplayPreview& preview_;
    PanelDock* dock_;
    Navigator* navigator_;
    UndoEntries* undo_;
    DiscardedScriptsMenu* discarded_;
    FolderCheck check_;
    ItemPanels* items_ = nullptr;
    ComparisonTools* comparison_ = nullptr;
    ItemEditing* itemEditing_ = nullptr;
    MonitorTools* monitor_ = nullptr;
    QPointer<FindingsPanel> findings_; ///< null until it is opened
};

} // namespace orvista
