#include "mainwindow/ProjectCommands.h"

#include "display/forms/DisplayPreview.h"
#include "items/forms/MessagesPanel.h"
#include "mainwindow/ComparisonCommands.h"
#include "mainwindow/DiscardedScriptsMenu.h"
#include "mainwindow/FindingCommands.h"
#include "mainwindow/FleetCommands.h"
#include "mainwindow/ItemCommands.h"
#include "mainwindow/MessageListPage.h"
#include "mainwindow/NamesCommands.h"
#include "mainwindow/OpenMaster.h"
#include "mainwindow/PanelDock.h"
#include "mainwindow/ProjectChanges.h"
#include "mainwindow/Recovery.h"
#include "mainwindow/SheetCommands.h"
#include "mainwindow/TryOut.h"
#include "mainwindow/UndoCommands.h"
#include "widgets/ModalDialogs.h"

#include <QAction>
#include <QMainWindow>
#include <QShortcut>

#include <algorithm>
#include <iterator>

namespace orvista {

namespace Rules = EnablingRules;

ProjectCommands::ProjectCommands(const Surroundings& surroundings, QMainWindow& window)
    : QObject(&window),
      around_(surroundings),
      preview_(surroundings.messagePage.preview()),
      undo_(new UndoCommands(around_.changes, window)),
      items_(new ItemCommands(
          around_.lifecycle.project(), around_.changes, around_.navigator, around_.dock,
          [&preview = preview_] { return preview.setting(); }, window)),
      findings_(new FindingCommands(around_.changes, around_.navigator, around_.dock, this)),
      discarded_(new DiscardedScriptsMenu(around_.messagePage, around_.navigator, window)),
      sheets_(new SheetCommands(
          around_.lifecycle, around_.changes, around_.dock,
          [&preview = preview_] { return preview.setting(); }, window)),
      comparison_(new ComparisonCommands(
          {around_.lifecycle, around_.chooser, around_.transfer, around_.master.view()}, around_.changes,
          around_.dock, this)),
      acceptance_(new AcceptanceCommands(
          {around_.lifecycle, *comparison_, around_.notes, preview_, around_.dock, window},
          around_.acceptance)),
      fleet_(new FleetCommands(around_.lifecycle, around_.notes, around_.master, window)),
      names_(new NamesCommands(around_.lifecycle, around_.notes, window)) {
    connect(items_, &ItemCommands::pastedFrom, this, &ProjectCommands::itemsCameFrom);
    connect(sheets_, &SheetCommands::itemsCameFrom, this, &ProjectCommands::itemsCameFrom);
    connect(sheets_, &SheetCommands::namesCame, names_, &NamesCommands::import);
    connect(comparison_, &ComparisonCommands::itemsCameFrom, this, &ProjectCommands::itemsCameFrom);
    auto* const find = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_F), &window);
    connect(find, &QShortcut::activated, this, &ProjectCommands::enterMessagesFilter);
}

MenuRow ProjectCommands::editMenu() {
    const auto inTables = [this](QKeySequence::StandardKey keys) {
        return [this, keys](QAction& entry) { items_->bindToTables(entry, keys); };
    };
    const auto undoStep = [this](QAction& entry) { undo_->nameUndoStep(entry); };
    const auto redoStep = [this](QAction& entry) { undo_->nameRedoStep(entry); };
    const auto discardedScripts = [this](QAction& entry) { entry.setMenu(discarded_); };
    return {
        .name = "mnuEdit",
        .caption = tr("&Edit"),
        .commands =
            {row("miEditUndo", tr("Undo"), {UndoCommands::undoKey},
                 tr("Take back the last change of the project"), Rules::projectWork,
                 handler(&around_.changes, &ProjectChanges::undo), {.dress = undoStep}),
             row("miEditRedo", tr("Redo"), {UndoCommands::redoKey, UndoCommands::otherRedoKey},
                 tr("Redo the change that was undone"), Rules::projectWork,
                 handler(&around_.changes, &ProjectChanges::redo), {.dress = redoStep}),
             row("miEditCut", tr("Cu&t"), {},
                 tr("Copy the selected rows of Messages or Variables, then clear them"), Rules::projectWork,
                 handler(items_, &ItemCommands::miEditCut_Click),
                 {.beginsGroup = true, .dress = inTables(QKeySequence::Cut)}),
             row("miEditCopy", tr("&Copy"), {}, tr("Copy the selected rows of Messages or Variables"),
                 Rules::projectWork, handler(items_, &ItemCommands::miEditCopy_Click),
                 {.dress = inTables(QKeySequence::Copy)}),
             row("miEditPaste", tr("&Paste"), {},
                 tr("Put what was copied onto the selected row and those below it"), Rules::projectWork,
                 handler(items_, &ItemCommands::miEditPaste_Click), {.dress = inTables(QKeySequence::Paste)}),
             row("miEditClear", tr("Cl&ear"), {}, tr("Make the selected rows what they are in a new project"),
                 Rules::projectWork, handler(items_, &ItemCommands::miEditClear_Click),
                 {.dress = inTables(QKeySequence::Delete)}),
             row("miEditReplace", tr("&Replace in Messages\u2026"), {Qt::CTRL | Qt::Key_H},
                 tr("Replace a text in the scripts of all messages, each place to be ticked off"),
                 Rules::projectWork, handler(items_, &ItemCommands::miEditReplace_Click),
                 {.beginsGroup = true}),
             row("miEditNextFinding", tr("&Next Finding"), {Qt::Key_F4},
                 tr("Go to the next finding of the check"), Rules::projectWork,
                 handler(findings_, &FindingCommands::miEditNextFinding_Click), {.beginsGroup = true}),
             row("miEditPreviousFinding", tr("Pre&vious Finding"), {Qt::SHIFT | Qt::Key_F4},
                 tr("Go to the finding of the check before this one"), Rules::projectWork,
                 handler(findings_, &FindingCommands::miEditPreviousFinding_Click)),
             row("miEditRestoreScript", tr("Re&store Discarded Script"), {},
                 tr("Bring a script back that was edited, not applied, and thrown away"), Rules::projectWork,
                 {}, {.dress = discardedScripts})},
        .restUnderDialogs = true};
}

MenuRow ProjectCommands::viewMenu() {
    const auto dockShown = [this](QAction& entry) {
        connect(&around_.dock, &PanelDock::shownChanged, &entry, &QAction::setChecked);
    };
    const auto previewShown = [this](QAction& entry) {
        entry.setChecked(!preview_.isHidden());
        connect(&preview_, &DisplayPreview::shownChanged, &entry, &QAction::setChecked);
    };
    MenuRow menu{
        .name = "mnuView",
        .caption = tr("&View"),
        .commands = {row("miViewPanels", tr("&Panels"), {}, tr("Show or hide the tables below the pages"),
                         Rules::always, handler(this, &ProjectCommands::miViewPanels_Click),
                         {.isCheckable = true, .dress = dockShown}),
                     row("miViewPreview", tr("&Display Preview"), {},
                         tr("The message as the display shows it, under its script"), Rules::always,
                         handler(this, &ProjectCommands::miViewPreview_Click),
                         {.isCheckable = true, .dress = previewShown})},
        .restUnderDialogs = true};
    std::ranges::move(panelEntries(), std::back_inserter(menu.commands));
    return menu;
}

std::vector<CommandRow> ProjectCommands::panelEntries() {
    std::vector<CommandRow> entries;
    for (const PanelDock::Panel& panel : around_.dock.panels()) {
        const PanelDock::ViewEntry& entry = panel.entry;
        if (entry.name)
            entries.push_back(row(entry.name, entry.caption, {}, entry.toolTip, Rules::always,
                                  [this, type = panel.type] { around_.dock.open(*type); }));
    }
    return entries;
}

MenuRow ProjectCommands::toolsMenu() {
    return {
        .name = "mnuTools",
        .caption = tr("&Tools"),
        .commands =
            {row("miToolsCheck", tr("&Check Project"), {Qt::Key_F8},
                 tr("List what will go wrong on the display"), Rules::projectWork,
                 handler(this, &ProjectCommands::miToolsCheck_Click)),
             row("miToolsNames", tr("&Names and Display\u2026"), {},
                 tr("Label, unit and comment of each variable and message; the display's name and columns"),
                 Rules::projectWork, handler(names_, &NamesCommands::miToolsNames_Click)),
             row("miToolsExportAddresses", tr("Export &Address List…"), {},
                 tr("Write where every variable and message lies, for the PLC programmer: as a table, as "
                    "HTML or PDF, as Structured Text or PLCopen XML"),
                 Rules::projectWork, handler(sheets_, &SheetCommands::miToolsExportAddresses_Click),
                 {.beginsGroup = true}),
             row("miToolsBook", tr("Export Message &Book\u2026"), {},
                 tr("Write every message with pictures of its pages, to print and sign: HTML or PDF"),
                 Rules::projectWork, handler(sheets_, &SheetCommands::miToolsBook_Click)),
             row("miToolsExportMessages", tr("Export &Messages…"), {}, tr("Write all messages as a table"),
                 Rules::projectWork, handler(sheets_, &SheetCommands::miToolsExportMessages_Click)),
             row("miToolsImportMessages", tr("&Import Messages…"), {},
                 tr("Take messages from a table, after a look at old and new"), Rules::projectWork,
                 handler(sheets_, &SheetCommands::miToolsImportMessages_Click)),
             row("miToolsExportVariables", tr("&Export Variables…"), {}, tr("Write all variables as a table"),
                 Rules::projectWork, handler(sheets_, &SheetCommands::miToolsExportVariables_Click)),
             row("miToolsImportVariables", tr("Import Variab&les…"), {},
                 tr("Take variables from a table, after a look at old and new"), Rules::projectWork,
                 handler(sheets_, &SheetCommands::miToolsImportVariables_Click)),
             row("miToolsCompareDisplay", tr("Compare with &Display…"), {},
                 tr("List the differences between this project and a display"), Rules::projectWork,
                 handler(comparison_, &ComparisonCommands::miToolsCompareDisplay_Click),
                 {.beginsGroup = true}),
             row("miToolsCompareProject", tr("Compare with &Project…"), {},
                 tr("List the differences between this project and another"), Rules::projectWork,
                 handler(comparison_, &ComparisonCommands::miToolsCompareProject_Click)),
             row("miToolsVerify", tr("&Verify Display…"), {},
                 tr("Compare every byte an upload would send with the display's files"), Rules::projectWork,
                 handler(comparison_, &ComparisonCommands::miToolsVerify_Click)),
             row("miToolsAccept", tr("Accept at the Di&splay…"), {},
                 tr("Have the display show one message after the other, and note what is seen"),
                 Rules::projectWork, handler(acceptance_, &AcceptanceCommands::miToolsAccept_Click)),
             row("miToolsSeveral", tr("&Upload to Several Displays…"), {},
                 tr("Send the project to the displays of a list, many at once"), Rules::projectWork,
                 handler(fleet_, &FleetCommands::miToolsSeveral_Click)),
             row("miToolsRestore", tr("&Restore Unsaved Work…"), {},
                 tr("Open work that was not saved when the program ended"), Rules::always,
                 handler(&around_.recovery, &Recovery::miToolsRestore_Click), {.beginsGroup = true}),
             row("miToolsTry", tr("&Try without a Display…"), {},
                 tr("Open a copy of the example and start a simulated display"), Rules::always,
                 handler(&around_.tryOut, &TryOut::miToolsTry_Click)),
             row("miToolsPageHelp", tr("&Help on This Page"), {},
                 tr("Open the help on the page that is shown"), Rules::always, around_.showPageHelp)},
        .restUnderDialogs = true};
}

void ProjectCommands::importTable(const std::string& path) {
    sheets_->importAny(path);
}

void ProjectCommands::compareWith(const ChosenProject& other) {
    comparison_->compareWithProject(other);
}

void ProjectCommands::offerCutOffAcceptance() {
    acceptance_->offerCutOff();
}

void ProjectCommands::miViewPanels_Click() {
    if (around_.dock.isVisible())
        around_.dock.closeForUser();
    else
        around_.dock.openAsItWas();
}

void ProjectCommands::miViewPreview_Click() {
    preview_.setShown(preview_.isHidden());
}

void ProjectCommands::miToolsCheck_Click() {
    preview_.lookAtBitmaps();
    around_.master.look();
    findings_->check();
}

void ProjectCommands::enterMessagesFilter() {
    if (!isModalDialogOpen())
        around_.dock.open<MessagesPanel>().enterFilter();
}

} // namespace orvista
