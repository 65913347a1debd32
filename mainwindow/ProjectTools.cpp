#include "mainwindow/ProjectTools.h"

#include "check/forms/FindingsPanel.h"
#include "display/forms/DisplayPreview.h"
#include "mainwindow/Commands.h"
#include "mainwindow/DiscardedScriptsMenu.h"
#include "mainwindow/ItemEditing.h"
#include "mainwindow/ItemPanels.h"
#include "mainwindow/MessageListPage.h"
#include "mainwindow/ModbusSettingPage.h"
#include "mainwindow/MonitorTools.h"
#include "mainwindow/Navigator.h"
#include "mainwindow/PanelDock.h"
#include "mainwindow/ProjectChanges.h"
#include "mainwindow/UndoEntries.h"
#include "mainwindow/VariableListPage.h"
#include "widgets/ModalDialogs.h"

#include <QAction>
#include <QMainWindow>
#include <QShortcut>

#include <algorithm>
#include <iterator>
#include <type_traits>
#include <utility>

namespace orvista {

namespace {

constexpr const char* findingsPanel = "findings";

void append(std::vector<CommandRow>& commands, const std::vector<CommandRow>& more) {
    commands.insert(commands.end(), more.begin(), more.end());
}

} // namespace

ProjectTools::ProjectTools(const Project& project, ProjectChanges& changes, Commands& commands,
                           const Pages& pages, ComparisonTools::World world, std::uint16_t modbusPort,
                           QMainWindow& window)
    : QObject(&window),
      project_(project),
      changes_(changes),
      commands_(commands),
      preview_(pages.messages.preview()),
      dock_(new PanelDock(window)),
      navigator_(new Navigator(
          commands,
          {{Kind::Regular, "miOptionMsgLst", &pages.messages},
           {Kind::Emergency, "miOptionMsgLst", &pages.messages},
           {Kind::Float, "miVarLst", &pages.variables},
           {Kind::Boolean, "miVarLst", &pages.variables},
           {Kind::AddressMap, "miOptionModbusSetting", &pages.addresses}},
          [this](const QString& text) { dock_->showNotice(text); }, this)),
      undo_(new UndoEntries(changes, commands, window)),
      discarded_(new DiscardedScriptsMenu(pages.messages, *navigator_, window)) {
    connect(&changes, &ProjectChanges::notice, dock_, &PanelDock::showNotice);
    addPanels();
    items_ = new ItemPanels(project_, check_, preview_, *navigator_, *dock_);
    comparison_ = new ComparisonTools(std::move(world), changes, *navigator_, *dock_, this);
    itemEditing_ = new ItemEditing(project_, changes, commands, *items_, *navigator_, window);
    connect(itemEditing_, &ItemEditing::notice, dock_, &PanelDock::showNotice);
    connect(itemEditing_, &ItemEditing::pastedFrom, this, &ProjectTools::itemsCameFrom);
    connect(comparison_, &ComparisonTools::itemsCameFrom, this, &ProjectTools::itemsCameFrom);
    monitor_ = new MonitorTools(project_, pages.tester, preview_, *navigator_, *dock_, modbusPort, window);
    connectPages(pages);
    commands.observe(EnablingRules::projectWork, [this](bool enabled) {
        dock_->setPanelsEnabled(enabled);
        if (enabled)
            return;
        comparison_->forget();
        monitor_->stop();
    });
    auto* const find = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_F), &window);
    connect(find, &QShortcut::activated, items_, [this] {
        if (!isModalDialogOpen())
            items_->enterMessagesFilter();
    });
    connect(dock_, &PanelDock::shownChanged, this,
            [this](bool shown) { commands_.action("miViewPanels").setChecked(shown); });
}

void ProjectTools::addPanels() {
    dock_->addPanel({findingsPanel, tr("Findings"), [this] {
                         findings_ = new FindingsPanel(project_, check_, preview_.columns(),
                                                       [this] { return navigator_->notAppliedItems(); });
                         connect(findings_, &FindingsPanel::placeChosen, navigator_, &Navigator::goTo);
                         connect(findings_, &FindingsPanel::rowLeft, navigator_, &Navigator::forget);
                         connect(&preview_, &DisplayPreview::columnsChanged, findings_,
                                 [this] { findings_->setColumns(preview_.columns()); });
                         return findings_;
                     }});
}

void ProjectTools::connectPages(const Pages& pages) {
    const auto follow = [this](auto* page) {
        using Page = std::remove_pointer_t<decltype(page)>;
        connect(page, &Page::stored, &changes_, &ProjectChanges::noteStored);
        connect(page, &Page::notAppliedChanged, &changes_, &ProjectChanges::settle);
        connect(page, &Page::notAppliedChanged, this, [this] {
            if (findings_)
                findings_->markNotApplied();
            items_->markNotApplied();
            comparison_->markNotApplied();
            monitor_->markNotApplied();
        });
    };
    follow(&pages.messages);
    follow(&pages.variables);
    follow(&pages.addresses);
}

void ProjectTools::projectChanged() {
    if (findings_)
        findings_->checkSoon();
    items_->projectChanged();
    comparison_->projectChanged();
    monitor_->projectChanged();
}

MenuRow ProjectTools::editMenu() {
    std::vector<CommandRow> commands = undo_->rows();
    append(commands, itemEditing_->entries());
    commands.push_back(DiscardedScriptsMenu::entry());
    return {
        .name = "mnuEdit", .caption = tr("&Edit"), .commands = std::move(commands), .restUnderDialogs = true};
}

MenuRow ProjectTools::viewMenu() {
    std::vector<CommandRow> commands = {
        {"miViewPanels",
         tr("&Panels"),
         {},
         tr("Show or hide the tables below the pages"),
         EnablingRules::always,
         [this] { miViewPanels_Click(); },
         true},
        {.name = "miViewPreview",
         .caption = tr("Display Preview"),
         .toolTip = tr("The message as the display shows it, under its script"),
         .enabling = EnablingRules::always,
         .run = [this] { preview_.setShown(preview_.isHidden()); },
         .isCheckable = true}};
    append(commands, items_->viewEntries());
    append(commands, monitor_->viewEntries());
    return {
        .name = "mnuView", .caption = tr("&View"), .commands = std::move(commands), .restUnderDialogs = true};
}

void ProjectTools::followStates() {
    undo_->followSteps();
    itemEditing_->bindKeys();
    discarded_->attachTo(commands_);
    QAction& entry = commands_.action("miViewPreview");
    entry.setChecked(!preview_.isHidden());
    connect(&preview_, &DisplayPreview::shownChanged, &entry, &QAction::setChecked);
}

MenuRow ProjectTools::toolsMenu(std::vector<CommandRow> ofFiles) {
    MenuRow menu{.name = "mnuTools",
                 .caption = tr("&Tools"),
                 .commands = {{"miToolsCheck", tr("&Check Project"), Qt::Key_F8,
                               tr("List what will go wrong on the display"), EnablingRules::projectWork,
                               [this] { miToolsCheck_Click(); }}},
                 .restUnderDialogs = true};
    std::ranges::move(ofFiles, std::back_inserter(menu.commands));
    std::ranges::move(comparison_->toolsEntries(), std::back_inserter(menu.commands));
    return menu;
}

void ProjectTools::miViewPanels_Click() {
    if (dock_->isVisible())
        dock_->hide();
    else
        dock_->open();
}

void ProjectTools::miToolsCheck_Click() {
    dock_->open(findingsPanel);
    findings_->check();
}

} // namespace orvista
