#include "mainwindow/frmMain.h"

#include "dialogs/frmLic.h"
#include "link/TransferCommands.h"
#include "mainwindow/BitmapOffer.h"
#include "mainwindow/Commands.h"
#include "mainwindow/FileTools.h"
#include "mainwindow/Guard.h"
#include "mainwindow/HelpOpener.h"
#include "mainwindow/ItemTree.h"
#include "mainwindow/MessageListPage.h"
#include "mainwindow/ModbusSettingPage.h"
#include "mainwindow/ProjectChanges.h"
#include "mainwindow/ProjectTools.h"
#include "mainwindow/ProjectTrees.h"
#include "mainwindow/Recovery.h"
#include "mainwindow/StatusBar.h"
#include "mainwindow/SystemPage.h"
#include "mainwindow/TcpTesterPage.h"
#include "mainwindow/ToolBar.h"
#include "mainwindow/ToolIcons.h"
#include "mainwindow/TryOut.h"
#include "mainwindow/VariableListPage.h"
#include "widgets/FormParts.h"

#include <QCloseEvent>
#include <QGroupBox>
#include <QMenuBar>
#include <QScreen>
#include <QScrollArea>
#include <QShortcut>
#include <QSplitter>
#include <QStyle>
#include <QTabWidget>
#include <QVBoxLayout>
#include <QWhatsThis>

namespace orvista {

namespace {

/// In the order of the tabs.
enum Page { System, ModbusSetting, VariableList, MessageList };

constexpr const char* helpFileName = "OR102.chm";

QGroupBox* framed(const QString& name, const QString& caption, QWidget* content) {
    auto* frame = named<QGroupBox>(name, caption);
    auto* layout = new QVBoxLayout(frame);
    layout->addWidget(content);
    return frame;
}

/// Pages of many boxes scroll on small screens instead of keeping the window large.
QScrollArea* scrolling(QWidget* page) {
    auto* area = new QScrollArea;
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidget(page);
    // The tab's own background shows through.
    area->viewport()->setAutoFillBackground(false);
    page->setAutoFillBackground(false);
    return area;
}

/// Leaves room for the window's frame, whose size is known only once the window is shown.
void resizeWithinScreen(QWidget& window, QSize wanted) {
    const int border = window.style()->pixelMetric(QStyle::PM_MdiSubWindowFrameWidth, nullptr, &window);
    const int title = window.style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, &window);
    const QSize frame(2 * border, title + border);
    window.resize(wanted.boundedTo(window.screen()->availableSize() - frame));
}

} // namespace

frmMain::frmMain(Project& project, ConfigModule::History& history,
                 const DocMgrModule::ProgramEnvironment& environment, const MainWindowSeams& seams)
    : project_(project),
      history_(history),
      seams_(seams),
      lifecycle_(project, history, environment, seams.messages, seams.chooser, *this),
      commands_(new Commands(seams.messages, *this)),
      several_(lifecycle_, *this),
      trvSystem(named<ItemTree>(QStringLiteral("trvSystem"))),
      tabDetails(named<QTabWidget>(QStringLiteral("tabDetails"))) {
    setObjectName(QStringLiteral("frmMain"));
    // The window's own menu would offer to hide the toolbar, and nothing would bring it back.
    setContextMenuPolicy(Qt::NoContextMenu);
    setWindowIcon(ToolIcons::program());
    setStatusBar(new StatusBar);
    buildPages();
    buildCommands();
    buildLayout();
    connect(toolbar_, &ToolBar::ButtonClick, this, &frmMain::ToolbarMain_ButtonClick);
    connect(trvSystem, &ItemTree::NodeClick, this, &frmMain::trvSystem_NodeClick);
    connect(tabDetails, &QTabWidget::currentChanged, this, &frmMain::markPageInTree);
    // The toolbar's descriptions are found by asking "What's this?".
    auto* whatsThis = new QShortcut(Qt::SHIFT | Qt::Key_F1, this);
    connect(whatsThis, &QShortcut::activated, this, &QWhatsThis::enterWhatsThisMode);
    Form_Load();
}

void frmMain::buildPages() {
    testerPage_ = new TcpTesterPage(seams_.messages);
    systemPage_ = new SystemPage(project_, lifecycle_, *testerPage_);
    modbusPage_ = new ModbusSettingPage(project_, lifecycle_, seams_.messages, *testerPage_);
    variablePage_ = new VariableListPage(project_, lifecycle_, seams_.messages);
    messagePage_ = new MessageListPage(project_, lifecycle_, seams_.messages, seams_.previewClock);
    pages_ = {
        {"System", "C1", "System", "system.html", scrolling(systemPage_), "miOptionSystemCfg",
         handler(&frmMain::miOptionSystemCfg_Click)},
        {"Modbus Setting", "C2", "Modbus Setting", "modbus-setting.html", scrolling(modbusPage_),
         "miOptionModbusSetting", handler(&frmMain::miOptionModbusSetting_Click)},
        {"Variable List", "C3", "Variable List", "variable-list.html", scrolling(variablePage_), "miVarLst",
         handler(&frmMain::miVarLst_Click)},
        {"Message List", "C4", "Message List", "message-list.html", scrolling(messagePage_), "miOptionMsgLst",
         handler(&frmMain::miOptionMsgLst_Click)},
        {"TCP Tester", "C5", "Orvista Test", "tcp-tester.html", scrolling(testerPage_)},
    };
    for (const PageRow& page : pages_)
        tabDetails->addTab(page.widget, QString::fromLatin1(page.title));
}

std::vector<CommandRow> frmMain::pageEntries() const {
    std::vector<CommandRow> entries;
    for (const PageRow& page : pages_) {
        if (page.entry)
            entries.push_back({page.entry, page.title, {}, {}, EnablingRules::projectWork, page.show});
    }
    return entries;
}

std::vector<MenuRow> frmMain::menuRows() {
    namespace Rules = EnablingRules;
    // The keys are written out, since the platforms' standard keys differ (some have none for Save as).
    return {
        {"mnuFile",
         "&File",
         {{"miFileNew", "&New", Qt::CTRL | Qt::Key_N, {}, Rules::always, handler(&frmMain::miFileNew_Click)},
          {"miFileOpen",
           "&Open",
           Qt::CTRL | Qt::Key_O,
           {},
           Rules::always,
           handler(&frmMain::miFileOpen_Click)},
          {"miFileSave", "Save", Qt::CTRL | Qt::Key_S, {}, Rules::save, handler(&frmMain::miFileSave_Click)},
          {"miFileSaveAs",
           "Save as",
           Qt::CTRL | Qt::SHIFT | Qt::Key_S,
           {},
           Rules::saveAs,
           handler(&frmMain::miFileSaveAs_Click)},
          {"miFileExit", "Exit", {}, {}, Rules::always, handler(&frmMain::miFileExit_Click)}}},
        {"mnuLink",
         "&Link",
         {{"miLinkUpload",
           "Upload Project to Ulvo",
           {},
           {},
           Rules::uploadEntry,
           handler(&frmMain::miLinkUpload_Click)},
          {"miLinkDownload",
           "Download Project from Ulvo",
           {},
           {},
           Rules::always,
           handler(&frmMain::miLinkDownload_Click)}}},
        {"mnuOption", "&Option", pageEntries()},
        tools_->editMenu(),
        tools_->viewMenu(),
        toolsMenu(),
        {"mnuHelp",
         "&Help",
         {{"miHelpContext", "Context", Qt::Key_F1, {}, Rules::always, handler(&frmMain::miHelpContext_Click)},
          {"miHelpAbout", "About Quillmark", {}, {}, Rules::always, handler(&frmMain::miHelpAbout_Click)}}},
    };
}

MenuRow frmMain::toolsMenu() {
    MenuRow menu = tools_->toolsMenu(files_->toolsEntries());
    menu.commands.push_back(several_.toolsEntry());
    menu.commands.push_back(recovery_->restoreCommand());
    menu.commands.push_back(tryOut_->entry());
    menu.commands.push_back({.name = "miToolsPageHelp",
                             .caption = tr("&Help on This Page"),
                             .toolTip = tr("Open the help where it tells of the shown page"),
                             .enabling = EnablingRules::always,
                             .run = handler(&frmMain::miToolsPageHelp_Click)});
    return menu;
}

std::function<void()> frmMain::handler(void (frmMain::*click)()) {
    return [this, click] { (this->*click)(); };
}

void frmMain::buildCommands() {
    changes_ = new ProjectChanges(project_, lifecycle_, {messagePage_, variablePage_, modbusPage_}, this);
    tools_ = new ProjectTools(
        project_, *changes_, *commands_, {*messagePage_, *variablePage_, *modbusPage_, *testerPage_},
        {lifecycle_, seams_.chooser, [this] { return transfer_; }}, seams_.modbusPort, *this);
    files_ = new FileTools(lifecycle_, *changes_, *commands_, tools_->dock(), *this);
    buildRecovery();
    buildBitmapOffer();
    tryOut_ = new TryOut(lifecycle_, tools_->navigator(), tools_->dock(),
                         seams_.tryOut.value_or(TryOutSettings::usual(lifecycle_.environment(), this)), this);
    commands_->addMenus(*menuBar(), menuRows());
    tools_->followStates();
    for (QWidget* const control : {static_cast<QWidget*>(tabDetails), static_cast<QWidget*>(trvSystem)})
        commands_->observe(EnablingRules::projectWork,
                           [control](bool enabled) { control->setEnabled(enabled); });
    toolbar_ = new ToolBar(*commands_);
    addToolBar(toolbar_);
}

void frmMain::buildRecovery() {
    // The message page last: its script is what the user goes on with.
    recovery_ = new Recovery(lifecycle_, {seams_.messages, tools_->navigator(), tools_->dock(), *this},
                             {modbusPage_, variablePage_, messagePage_}, seams_.recovery);
    RecoveryKeeper& keeper = recovery_->keeper();
    connect(modbusPage_, &ModbusSettingPage::edited, &keeper, &RecoveryKeeper::noteChange);
    connect(variablePage_, &VariableListPage::edited, &keeper, &RecoveryKeeper::noteChange);
    connect(messagePage_, &MessageListPage::edited, &keeper, &RecoveryKeeper::noteChange);
}

void frmMain::buildBitmapOffer() {
    bitmaps_ = new BitmapOffer(project_, tools_->dock(), this);
    connect(tools_, &ProjectTools::itemsCameFrom, bitmaps_, &BitmapOffer::offerFrom);
    connect(files_, &FileTools::itemsCameFrom, bitmaps_, &BitmapOffer::offerFrom);
    connect(bitmaps_, &BitmapOffer::copied, this, [this] {
        messagePage_->followProject();
        tools_->projectChanged();
    });
}

void frmMain::buildLayout() {
    trvSystem->setAccessibleName(tr("Pages"));
    auto* splitter = new QSplitter;
    splitter->setChildrenCollapsible(false);
    splitter->addWidget(
        framed(QStringLiteral("fraSystemInfo"), QStringLiteral("System information"), trvSystem));
    splitter->addWidget(framed(QStringLiteral("fraDetails"), QStringLiteral("Details"), tabDetails));
    splitter->setStretchFactor(1, 1);

    auto* content = new QWidget;
    auto* layout = new QVBoxLayout(content);
    layout->addWidget(splitter);
    setCentralWidget(content);

    const int character = fontMetrics().averageCharWidth();
    splitter->setSizes({28 * character, 140 * character});
    resizeWithinScreen(*this, {168 * character, 50 * fontMetrics().lineSpacing()});
}

void frmMain::Form_Load() {
    awaitsActivation_ = true;
    history_.clear();
    history_.ReadHistory();
    ProjectTrees::fillNavigationTree(*trvSystem, pages_);
    markPageInTree(tabDetails->currentIndex());
    ProjectTrees::fillMessageTree(messagePage_->tree());
    ProjectTrees::fillVariableTree(variablePage_->tree());
    modbusPage_->setUp();
    lifecycle_.InitProject();
    lifecycle_.SetModified(false);
}

void frmMain::Form_Activate() {
    if (!awaitsActivation_)
        return;
    awaitsActivation_ = false;
    if (!startPath_.empty())
        return lifecycle_.openProjectFile(startPath_);
    switch (seams_.chooser.chooseAtStartup()) {
    case StartupChoice::Cancelled:
        return;
    case StartupChoice::CreateNew:
        return lifecycle_.createChosenProject();
    case StartupChoice::LoadExisting:
        return lifecycle_.openChosenProject();
    }
}

void frmMain::queueActivation() {
    // The window is to be on the screen before a dialog covers it.
    QMetaObject::invokeMethod(
        this, [this] { runGuarded(seams_.messages, [this] { Form_Activate(); }); }, Qt::QueuedConnection);
}

bool frmMain::event(QEvent* event) {
    // Menus would show their (empty) hints over the panels of the status bar.
    if (event->type() == QEvent::StatusTip)
        return true;
    const bool activated = event->type() == QEvent::WindowActivate || event->type() == QEvent::Show;
    if (activated && awaitsActivation_)
        queueActivation();
    // While the dialog is open nothing is written, and nothing changes.
    if (event->type() == QEvent::WindowBlocked)
        recovery_->keeper().keepNow();
    if (event->type() == QEvent::WindowActivate)
        files_->windowActivated();
    return QMainWindow::event(event);
}

void frmMain::RefreshViews() {
    systemPage_->refresh();
    modbusPage_->refresh();
    modbusPage_->fillTestPage();
    messagePage_->refresh();
    variablePage_->refresh();
    tools_->projectChanged();
}

void frmMain::showCaption(const std::string& caption) {
    // A project's name may hold Qt's own mark for modified windows.
    setWindowTitle(QString::fromStdString(caption).replace(QStringLiteral("[*]"), QStringLiteral("[*][*]")));
}

void frmMain::follow(ProjectTransition transition) {
    commands_->follow(transition);
    if (transition == ProjectTransition::Reset)
        forgetProject();
    recovery_->keeper().follow(transition);
    files_->follow(transition);
    messagePage_->followProject();
    tools_->projectChanged();
}

void frmMain::forgetProject() {
    changes_->forget();
    bitmaps_->withdraw();
}

void frmMain::showProjectName(const std::string& name) {
    systemPage_->showProjectName(name);
}

bool frmMain::hasUnappliedEdits() const {
    return tabDetails->isEnabled() &&
           (modbusPage_->hasUnappliedEdits() || variablePage_->hasUnappliedEdits() ||
            messagePage_->hasUnappliedEdits());
}

void frmMain::closeEvent(QCloseEvent* event) {
    bool close = true;
    runGuarded(seams_.messages, [this, &close] {
        close = false;
        close = saveBeforeClosing();
    });
    event->setAccepted(close);
}

bool frmMain::saveBeforeClosing() {
    if (!project_.modified && !hasUnappliedEdits())
        return true;
    switch (seams_.messages.askYesNoCancel("Do you want to save current project before exit?")) {
    case Answer::Cancel:
        return false;
    case Answer::No:
        recovery_->keeper().discard();
        return true;
    case Answer::Yes:
        break;
    }
    // Yes means all that is on the screen, applied or not.
    // Apply stays enabled when the boxes are emptied; it would then store an address map of zeros.
    if (modbusPage_->hasUnappliedEdits() && modbusPage_->holdsNewAddresses())
        modbusPage_->btnModBusApply_Click();
    if (variablePage_->hasUnappliedEdits())
        variablePage_->btnVarApply_Click();
    if (messagePage_->hasUnappliedEdits())
        messagePage_->btnMsgApply_Click();
    if (project_.ProjName.empty())
        lifecycle_.SaveAsCommand();
    else
        lifecycle_.SaveCommand();
    return !project_.modified;
}

void frmMain::miFileNew_Click() {
    lifecycle_.NewProjectCommand();
}

void frmMain::miFileOpen_Click() {
    lifecycle_.OpenProjectCommand();
}

void frmMain::miFileSave_Click() {
    lifecycle_.SaveCommand();
}

void frmMain::miFileSaveAs_Click() {
    const std::string folder = project_.ProjPath;
    lifecycle_.SaveAsCommand();
    if (project_.ProjPath != folder)
        bitmaps_->offerFrom(folder);
}

void frmMain::miFileExit_Click() {
    recovery_->keeper().keepNow();
    seams_.endProgram();
}

void frmMain::miLinkUpload_Click() {
    if (transfer_)
        transfer_->upload();
}

void frmMain::miLinkDownload_Click() {
    if (transfer_)
        transfer_->download();
}

void frmMain::miOptionSystemCfg_Click() {
    tabDetails->setCurrentIndex(System);
}

void frmMain::miOptionModbusSetting_Click() {
    tabDetails->setCurrentIndex(ModbusSetting);
}

void frmMain::miVarLst_Click() {
    tabDetails->setCurrentIndex(VariableList);
}

void frmMain::miOptionMsgLst_Click() {
    tabDetails->setCurrentIndex(MessageList);
}

std::string frmMain::helpFile() const {
    const DocMgrModule::ProgramEnvironment& environment = lifecycle_.environment();
    return environment.paths.join(environment.programFolder, helpFileName);
}

void frmMain::miHelpContext_Click() {
    seams_.helpOpener.open(helpFile());
}

void frmMain::miToolsPageHelp_Click() {
    seams_.helpOpener.openPage(helpFile(),
                               pages_.at(static_cast<std::size_t>(tabDetails->currentIndex())).help);
}

void frmMain::miHelpAbout_Click() {
    frmLic(this).exec();
}

void frmMain::ToolbarMain_ButtonClick(const QString& key) {
    toolbar_->run(key);
}

void frmMain::markPageInTree(int page) {
    // The tree points at the shown page, whichever way it was reached.
    trvSystem->setCurrentItem(trvSystem->topLevelItem(0)->child(page));
}

void frmMain::trvSystem_NodeClick(QTreeWidgetItem* node) {
    const QString key = nodeKey(*node);
    for (const PageRow& page : pages_) {
        if (key == QLatin1String(page.nodeKey))
            tabDetails->setCurrentWidget(page.widget);
    }
}

} // namespace orvista
