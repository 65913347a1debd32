#pragma once

#include "mainwindow/AcceptanceCommands.h"
#include "mainwindow/Commands.h"
#include "model/ProjectLifecycle.h"

#include <string>
#include <vector>

class QMainWindow;

namespace orvista {

class ComparisonCommands;
class DiscardedScriptsMenu;
class DisplayPreview;
class FindingCommands;
class FleetCommands;
class ItemCommands;
class MessageListPage;
class NamesCommands;
class Navigator;
class OpenMaster;
class OpenNotes;
class PanelDock;
class ProjectChanges;
class Recovery;
class SheetCommands;
class TransferCommands;
class TryOut;
class UndoCommands;

/// The menus Edit, View and Tools, each as one list, and what carries out their commands.
class ProjectCommands final : public QObject {
    Q_OBJECT
public:
    /// All must outlive the commands.
    struct Surroundings {
        DocMgrModule::ProjectLifecycle& lifecycle;
        ProjectChooser& chooser;
        ProjectChanges& changes;
        Navigator& navigator;
        PanelDock& dock;
        OpenNotes& notes;
        OpenMaster& master;
        MessageListPage& messagePage;
        Recovery& recovery;
        TryOut& tryOut;
        std::function<TransferCommands*()> transfer; ///< null where the program has none
        std::function<void()> showPageHelp;
        AcceptanceCommands::Settings acceptance;
    };
    ProjectCommands(const Surroundings& surroundings, QMainWindow& window);

    MenuRow editMenu();
    MenuRow viewMenu();
    MenuRow toolsMenu();

    /// Shows what the table of messages or variables would change, and takes what the user chooses.
    /// \param path UTF-8
    void importTable(const std::string& path);
    /// Shows what differs between the project in memory and that one on the disk.
    void compareWith(const ChosenProject& other);
    /// Offers what an acceptance that was cut off has left behind.
    void offerCutOffAcceptance();

signals:
    /// The project got items of one in that folder (UTF-8).
    void itemsCameFrom(const std::string& folder);

private:
    std::vector<CommandRow> panelEntries();
    void miViewPanels_Click();
    void miViewPreview_Click();
    void miToolsCheck_Click();
    void enterMessagesFilter();

    Surroundings around_;
    DisplayPreview& preview_;
    UndoCommands* undo_;
    ItemCommands* items_;
    FindingCommands* findings_;
    DiscardedScriptsMenu* discarded_;
    SheetCommands* sheets_;
    ComparisonCommands* comparison_;
    AcceptanceCommands* acceptance_;
    FleetCommands* fleet_;
    NamesCommands* names_;
};

} // namespace orvista
