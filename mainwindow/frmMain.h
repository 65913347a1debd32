#pragma once

#include "display/forms/PreviewClock.h"
#include "link/ModbusClient.h"
#include "mainwindow/MainPage.h"
#include "mainwindow/RecoverySettings.h"
#include "mainwindow/TryOutSettings.h"
#include "model/ProjectLifecycle.h"

#include <QMainWindow>

#include <functional>
#include <optional>
#include <string>
#include <vector>

class QTabWidget;
class QTreeWidgetItem;

namespace orvista {

class AddressOffer;
class BitmapOffer;
class Commands;
class HelpOpener;
class ItemTree;
struct MenuRow;
class MessageListPage;
class ModbusSettingPage;
class ProjectChanges;
class Navigator;
class NotWholeNotice;
class OpenMaster;
class OpenNotes;
class OverwriteNotice;
class PanelDock;
class ProjectCommands;
class Recovery;
class ReloadOffer;
class SystemPage;
class TcpTesterPage;
class ToolBar;
class TransferCommands;
class TryOut;
class VariableListPage;

/// What the main window needs of the world around it. All of it must outlive the window.
struct MainWindowSeams {
    Messages& messages;
    ProjectChooser& chooser;
    HelpOpener& helpOpener;
    /// Ends the program at once, without a question.
    std::function<void()> endProgram;
    PreviewClock previewClock = PreviewClock::system();
    RecoverySettings recovery = {};
    /// Where the display monitor reads.
    std::uint16_t modbusPort = ModbusClient::modbusPort;
    std::optional<TryOutSettings> tryOut = {}; ///< none: what lies beside the program
};

/// The program's one main window: navigation tree, pages, menus, toolbar and status bar around the one open
/// project. The pages have classes of their own; this class dispatches commands.
class frmMain final : public QMainWindow, public ProjectWindow {
    Q_OBJECT
public:
    /// Reads the history, builds the views and resets the project.
    frmMain(Project& project, ConfigModule::History& history,
            const DocMgrModule::ProgramEnvironment& environment, const MainWindowSeams& seams);
    ~frmMain() override;

    /// The first activation opens this project file (absolute, UTF-8) instead of the start-up dialog.
    void openAtStart(const std::string& path) { startPath_ = path; }
    /// Carries out Upload and Download; must outlive the window. Without one they do nothing.
    void useTransfer(TransferCommands& transfer) { transfer_ = &transfer; }

    /// Says something in the dock's line; an empty text takes the line away.
    void showNotice(const QString& text);

    DocMgrModule::ProjectLifecycle& lifecycle() { return lifecycle_; }
    MessageListPage& messagePage() { return *messagePage_; }
    Recovery& recovery() { return *recovery_; }
    TcpTesterPage& testerPage() { return *testerPage_; }
    OpenNotes& notes() { return *notes_; }
    /// What changes the open project from outside a page goes through it.
    ProjectChanges& changes() { return *changes_; }

    void RefreshViews() override;
    void showCaption(const std::string& caption) override;
    void follow(ProjectTransition transition) override;
    void showProjectName(const std::string& name) override;
    void beforeReplacing(const std::string& folder, const FileRemarks& remarks) override;
    void beforeSaving(const std::string& path) override;

protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void buildPages();
    void buildLayout();
    void buildCommands();
    void buildDock();
    void buildRecovery();
    void buildOffers(ProjectCommands& tools);
    template <typename Page>
    void connectItemPage(Page* page);
    void takeDroppedFiles(ProjectCommands& tools);
    MenuRow fileMenu();
    MenuRow linkMenu();
    MenuRow optionMenu() const;
    MenuRow helpMenu();
    void Form_Load();
    void Form_Activate();
    void queueActivation();
    void forgetProject();
    void showMaster();
    void markPageInTree(int page);

    bool hasUnappliedEdits() const;
    std::string helpFile() const;
    bool saveBeforeClosing();

    void miFileNew_Click();
    void miFileOpen_Click();
    void miFileSave_Click();
    void miFileSaveAs_Click();
    void miFileExit_Click();
    void miLinkUpload_Click();
    void miLinkDownload_Click();
    void miOptionSystemCfg_Click();
    void miOptionModbusSetting_Click();
    void miVarLst_Click();
    void miOptionMsgLst_Click();
    void miToolsPageHelp_Click();
    void miHelpContext_Click();
    void miHelpAbout_Click();
    void ToolbarMain_ButtonClick(const QString& key);
    void trvSystem_NodeClick(QTreeWidgetItem* node);

    Project& project_;
    ConfigModule::History& history_;
    MainWindowSeams seams_;
    DocMgrModule::ProjectLifecycle lifecycle_;
    TransferCommands* transfer_ = nullptr;
    std::string startPath_;
    bool awaitsActivation_ = true;

    Commands* commands_;
    ToolBar* toolbar_ = nullptr;
    ProjectChanges* changes_ = nullptr;
    PanelDock* dock_ = nullptr;
    Navigator* navigator_ = nullptr;
    ProjectCommands* tools_ = nullptr;
    Recovery* recovery_ = nullptr;
    ReloadOffer* reload_ = nullptr;
    NotWholeNotice* notWhole_ = nullptr;
    OpenNotes* notes_ = nullptr;
    OpenMaster* master_ = nullptr;
    OverwriteNotice* overwritten_ = nullptr;
    BitmapOffer* bitmaps_ = nullptr;
    AddressOffer* address_ = nullptr;
    TryOut* tryOut_ = nullptr;
    ItemTree* trvSystem;
    QTabWidget* tabDetails;
    std::vector<MainPage> pages_;
    TcpTesterPage* testerPage_ = nullptr;
    SystemPage* systemPage_ = nullptr;
    ModbusSettingPage* modbusPage_ = nullptr;
    VariableListPage* variablePage_ = nullptr;
    MessageListPage* messagePage_ = nullptr;
};

} // namespace orvista
