#include "mainwindow/frmMain.h"

#include "dialogs/frmLic.h"
#include "items/NotesFile.h"
#include "items/forms/LabelCell.h"
#include "link/TransferCommands.h"
#include "mainwindow/AddressOffer.h"
#include "mainwindow/BitmapOffer.h"
#include "mainwindow/Commands.h"
#include "mainwindow/DockRoom.h"
#include "mainwindow/DownloadNotice.h"
#include "mainwindow/FileDrops.h"
#include "mainwindow/Guard.h"
#include "mainwindow/HelpOpener.h"
#include "mainwindow/ItemTree.h"
#include "mainwindow/MessageListPage.h"
#include "mainwindow/ModbusSettingPage.h"
#include "mainwindow/Navigator.h"
#include "mainwindow/NotWholeNotice.h"
#include "mainwindow/OpenMaster.h"
#include "mainwindow/OpenNotes.h"
#include "mainwindow/OverwriteNotice.h"
#include "mainwindow/PanelDock.h"
#include "mainwindow/ProjectChanges.h"
#include "mainwindow/ProjectCommands.h"
#include "mainwindow/ProjectPanels.h"
#include "mainwindow/ProjectTrees.h"
#include "mainwindow/Recovery.h"
#include "mainwindow/ReloadOffer.h"
#include "mainwindow/StatusBar.h"
#include "mainwindow/SystemPage.h"
#include "mainwindow/TcpTesterPage.h"
#include "mainwindow/ToolBar.h"
#include "mainwindow/ToolIcons.h"
#include "mainwindow/TryOut.h"
#include "mainwindow/VariableListPage.h"
#include "model/FolderLookup.h"
#include "model/Item.h"
#include "widgets/FormParts.h"

#include <QAction>
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
enum Page { System, ModbusSetting, VariableList, MessageList, TcpTester };

constexpr const char* helpFileName = "OR102.chm";

QGroupBox* framed(const QString& name, const QString& caption, QWidget* content) {
    auto* frame = named<QGroupBox>(name, caption);
    auto* layout = new QVBoxLayout(frame);
    keepMarginsSmall(*layout);
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

} // namespace

frmMain::frmMain(Project& project, ConfigModule::History& history,
                 const DocMgrModule::ProgramEnvironment& environment, const MainWindowSeams& seams)
    : project_(project),
      history_(history),
      seams_(seams),
      lifecycle_(project, history, environment, seams.messages, seams.chooser, *this),
      commands_(new Commands(seams.messages, *this)),
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

frmMain::~frmMain() {
    // A table that loses the focus while the window goes would still lead to the line below the pages.
    if (dock_ != nullptr)
        dock_->disconnect(navigator_);
}

void frmMain::buildPages() {
    testerPage_ = new TcpTesterPage(seams_.messages);
    systemPage_ = new SystemPage(project_, lifecycle_, *testerPage_);
    modbusPage_ = new ModbusSettingPage(project_, lifecycle_, seams_.messages, *testerPage_);
    variablePage_ = new VariableListPage(project_, lifecycle_, seams_.messages);
    messagePage_ = new MessageListPage(project_, lifecycle_, seams_.messages, seams_.previewClock);
    pages_ = {
        {"System", "C1", "System", "system.html", scrolling(systemPage_), "miOptionSystemCfg",
         handler(this, &frmMain::miOptionSystemCfg_Click)},
        {"Modbus Setting", "C2", "Modbus Setting", "modbus-setting.html", scrolling(modbusPage_),
         "miOptionModbusSetting", handler(this, &frmMain::miOptionModbusSetting_Click)},
        {"Variable List", "C3", "Variable List", "variable-list.html", scrolling(variablePage_), "miVarLst",
         handler(this, &frmMain::miVarLst_Click)},
        {"Message List", "C4", "Message List", "message-list.html", scrolling(messagePage_), "miOptionMsgLst",
         handler(this, &frmMain::miOptionMsgLst_Click)},
        {"TCP Tester", "C5", "Orvista Test", "tcp-tester.html", scrolling(testerPage_)},
    };
    for (const MainPage& page : pages_)
        tabDetails->addTab(page.widget, QString::fromLatin1(page.title));
}

namespace Rules = EnablingRules;

// The keys are written out, since the platforms' standard keys differ (some have none for Save as).
MenuRow frmMain::fileMenu() {
    return {"mnuFile",
            "&File",
            {row("miFileNew", "&New", {Qt::CTRL | Qt::Key_N}, {}, Rules::always,
                 handler(this, &frmMain::miFileNew_Click)),
             row("miFileOpen", "&Open", {Qt::CTRL | Qt::Key_O}, {}, Rules::always,
                 handler(this, &frmMain::miFileOpen_Click)),
             row("miFileSave", "Save", {Qt::CTRL | Qt::Key_S}, {}, Rules::save,
                 handler(this, &frmMain::miFileSave_Click)),
             row("miFileSaveAs", "Save as", {Qt::CTRL | Qt::SHIFT | Qt::Key_S}, {}, Rules::saveAs,
                 handler(this, &frmMain::miFileSaveAs_Click)),
             row("miFileExit", "Exit", {}, {}, Rules::always, handler(this, &frmMain::miFileExit_Click))}};
}

MenuRow frmMain::linkMenu() {
    return {"mnuLink",
            "&Link",
            {row("miLinkUpload", "Upload Project to Ulvo", {}, {}, Rules::uploadEntry,
                 handler(this, &frmMain::miLinkUpload_Click)),
             row("miLinkDownload", "Download Project from Ulvo", {}, {}, Rules::always,
                 handler(this, &frmMain::miLinkDownload_Click))}};
}

MenuRow frmMain::optionMenu() const {
    MenuRow menu{"mnuOption", "&Option", {}};
    for (const MainPage& page : pages_) {
        if (page.entry)
            menu.commands.push_back(row(page.entry, page.title, {}, {}, Rules::projectWork, page.show));
    }
    return menu;
}

MenuRow frmMain::helpMenu() {
    return {"mnuHelp",
            "&Help",
            {row("miHelpContext", "Context", {Qt::Key_F1}, {}, Rules::always,
                 handler(this, &frmMain::miHelpContext_Click)),
             row("miHelpAbout", "About Quillmark", {}, {}, Rules::always,
                 handler(this, &frmMain::miHelpAbout_Click))}};
}

void frmMain::buildCommands() {
    buildDock();
    buildRecovery();
    notWhole_ = new NotWholeNotice(lifecycle_, *dock_, seams_.recovery.folder, this);
    overwritten_ = new OverwriteNotice(*dock_, seams_.recovery.folder, this);
    tryOut_ = new TryOut(lifecycle_, *navigator_, *dock_,
                         seams_.tryOut.value_or(TryOutSettings::usual(lifecycle_.environment(), this)), *this,
                         [this] { tabDetails->setCurrentIndex(TcpTester); });
    connect(testerPage_, &TcpTesterPage::messagesUpdated, tryOut_, &TryOut::takeHintAway);
    auto* const tools = new ProjectCommands(
        {lifecycle_,
         seams_.chooser,
         *changes_,
         *navigator_,
         *dock_,
         *notes_,
         *master_,
         *messagePage_,
         *recovery_,
         *tryOut_,
         [this] { return transfer_; },
         handler(this, &frmMain::miToolsPageHelp_Click),
         {seams_.recovery.folder, seams_.modbusPort, [this] { return testerPage_->isSending(); }}},
        *this);
    tools_ = tools;
    buildOffers(*tools);
    connectItemPage(messagePage_);
    connectItemPage(variablePage_);
    connectItemPage(modbusPage_);
    commands_->addMenus(*menuBar(), {fileMenu(), linkMenu(), optionMenu(), tools->editMenu(),
                                     tools->viewMenu(), tools->toolsMenu(), helpMenu()});
    commands_->observe(Rules::projectWork, [this](bool enabled) {
        tabDetails->setEnabled(enabled);
        trvSystem->setEnabled(enabled);
        dock_->setPanelsEnabled(enabled);
    });
    toolbar_ = new ToolBar(*commands_);
    addToolBar(toolbar_);
    takeDroppedFiles(*tools);
}

void frmMain::buildDock() {
    dock_ = new PanelDock(*this);
    changes_ = new ProjectChanges(project_, lifecycle_, {messagePage_, variablePage_, modbusPage_}, this);
    connect(changes_, &ProjectChanges::notice, dock_, &PanelDock::showNotice);
    navigator_ = new Navigator(
        *commands_,
        {{Kind::Regular, "miOptionMsgLst", messagePage_},
         {Kind::Emergency, "miOptionMsgLst", messagePage_},
         {Kind::Float, "miVarLst", variablePage_},
         {Kind::Boolean, "miVarLst", variablePage_},
         {Kind::AddressMap, "miOptionModbusSetting", modbusPage_}},
        [this](const QString& text) { dock_->showNotice(text); }, this);
    notes_ = new OpenNotes(project_, messagePage_->preview(), *dock_, this);
    master_ = new OpenMaster(project_, *notes_, messagePage_->preview(), *dock_, this);
    new ProjectPanels(project_,
                      {notes_->notes(), master_->view(), lifecycle_.fileRemarks(), messagePage_->preview(),
                       *testerPage_, seams_.modbusPort},
                      *navigator_, *dock_);
}

void frmMain::buildRecovery() {
    // The message page last: its script is what the user goes on with.
    recovery_ = new Recovery(lifecycle_, {seams_.messages, *navigator_, *dock_, *this},
                             {modbusPage_, variablePage_, messagePage_}, seams_.recovery);
}

void frmMain::buildOffers(ProjectCommands& tools) {
    messagePage_->useNotes(notes_->notes());
    messagePage_->useMaster(master_->view());
    const auto toolTipOf = [this](const QString& key) {
        const auto item = itemOfKey(key.toStdString());
        return item ? noteToolTip(notes_->notes().of(*item)) : QString();
    };
    messagePage_->tree().explain(toolTipOf);
    variablePage_->tree().explain(toolTipOf);
    connect(notes_, &OpenNotes::changed, dock_, &PanelDock::followProject);
    connect(master_, &OpenMaster::changed, this, &frmMain::showMaster);
    reload_ =
        new ReloadOffer(lifecycle_, {*this, *dock_, [this] { return hasUnappliedEdits(); },
                                     [&tools](const ChosenProject& onDisk) { tools.compareWith(onDisk); }});
    address_ = new AddressOffer(
        project_, *dock_, [this](const QString& address) { systemPage_->typeAddress(address); }, this);
    bitmaps_ = new BitmapOffer(project_, *dock_, this);
    connect(&tools, &ProjectCommands::itemsCameFrom, bitmaps_, &BitmapOffer::offerFrom);
    connect(bitmaps_, &BitmapOffer::copied, this, [this] {
        messagePage_->followProject();
        dock_->followProject();
    });
}

template <typename Page>
void frmMain::connectItemPage(Page* page) {
    connect(page, &Page::stored, changes_, &ProjectChanges::noteStored);
    connect(page, &Page::notAppliedChanged, changes_, &ProjectChanges::settle);
    connect(page, &Page::notAppliedChanged, dock_, &PanelDock::markNotApplied);
    connect(page, &Page::edited, &recovery_->keeper(), &RecoveryKeeper::noteChange);
}

void frmMain::takeDroppedFiles(ProjectCommands& tools) {
    new FileDrops(
        *this, seams_.messages,
        {{QString::fromLatin1(DocMgrModule::projectExtension), [] { return true; },
          [this](const std::string& path) { lifecycle_.openGivenProject(path); }},
         {QStringLiteral(".csv"), [this] { return commands_->action("miToolsImportMessages").isEnabled(); },
          [&tools](const std::string& path) { tools.importTable(path); }}});
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
    keepMarginsSmall(*layout);
    layout->addWidget(splitter);
    setCentralWidget(content);
    keepTabKeyFromScrollButtons(*tabDetails);
    new DockRoom(*tabDetails, *dock_, *this);

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
    tools_->offerCutOffAcceptance();
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
        reload_->look();
    return QMainWindow::event(event);
}

void frmMain::showNotice(const QString& text) {
    dock_->showNotice(text);
}

void frmMain::RefreshViews() {
    systemPage_->refresh();
    modbusPage_->refresh();
    modbusPage_->fillTestPage();
    messagePage_->refresh();
    variablePage_->refresh();
    dock_->followProject();
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
    reload_->follow(transition);
    address_->follow();
    tryOut_->follow();
    notWhole_->follow(transition);
    notes_->follow(transition);
    master_->follow();
    messagePage_->followProject();
    dock_->followProject();
}

void frmMain::forgetProject() {
    changes_->clear();
    bitmaps_->withdraw();
}

void frmMain::showMaster() {
    messagePage_->followMaster();
    dock_->followProject();
}

void frmMain::showProjectName(const std::string& name) {
    systemPage_->showProjectName(name);
}

void frmMain::beforeReplacing(const std::string& folder, const FileRemarks& remarks) {
    notWhole_->beforeReplacing(folder, remarks);
}

void frmMain::beforeSaving(const std::string& path) {
    if (reload_->isOverwriting(path))
        overwritten_->keep(projectFileOnDisk(lifecycle_.environment().paths, path));
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
    const std::string notes = notesPath(project_);
    lifecycle_.SaveAsCommand();
    notes_->offerFrom(notes);
    if (project_.ProjPath != folder)
        bitmaps_->offerFrom(folder);
}

void frmMain::miFileExit_Click() {
    recovery_->keeper().keepNow();
    seams_.endProgram();
}

void frmMain::miLinkUpload_Click() {
    if (!transfer_)
        return;
    if (const std::string place = master_->firstPlace(); !place.empty())
        dock_->showNotice(tr("The messages have places such as {%1}; use Upload to Several Displays")
                              .arg(QString::fromStdString(place)));
    transfer_->upload();
}

void frmMain::miLinkDownload_Click() {
    if (!transfer_)
        return;
    const std::string notes = notesPath(project_);
    const FetchedDisplay display = transfer_->download();
    if (const QString notice = downloadNotice(display, project_.ProjPath); !notice.isEmpty())
        dock_->showNotice(notice);
    if (display.end == FetchedDisplay::End::Fetched)
        address_->offer(QString::fromStdString(display.address).trimmed());
    if (display.end == FetchedDisplay::End::Fetched)
        notes_->offerFrom(notes);
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
    for (const MainPage& page : pages_) {
        if (key == QLatin1String(page.nodeKey))
            tabDetails->setCurrentWidget(page.widget);
    }
}

} // namespace orvista
