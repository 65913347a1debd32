#include "mainwindow/ProjectPanels.h"

#include "check/forms/FindingsPanel.h"
#include "compare/forms/ComparisonPanel.h"
#include "display/forms/DisplayPreview.h"
#include "items/HeldValues.h"
#include "items/forms/MessagesPanel.h"
#include "items/forms/VariablesPanel.h"
#include "link/forms/MonitorPanel.h"
#include "mainwindow/MonitorAndTester.h"
#include "mainwindow/Navigator.h"

namespace orvista {

ProjectPanels::ProjectPanels(const Project& project, const Surroundings& surroundings, Navigator& navigator,
                             PanelDock& dock)
    : QObject(&dock), project_(project), around_(surroundings), navigator_(navigator) {
    for (const PanelDock::Panel& row : rows())
        dock.addPanel(row);
    connect(&around_.preview, &DisplayPreview::bitmapsChanged, &dock, &PanelDock::followProject);
    connect(&dock, &PanelDock::placeChosen, &navigator, &Navigator::goTo);
    connect(&dock, &PanelDock::rowLeft, &navigator, &Navigator::clear);
}

std::vector<PanelDock::Panel> ProjectPanels::rows() {
    return {
        {&FindingsPanel::staticMetaObject, tr("Findings"),
         [this] {
             auto* const panel = new FindingsPanel(project_, around_.fileRemarks, check_,
                                                   around_.preview.columns(), notAppliedItems(), setting());
             panel->useMaster(around_.master);
             return showingNotes(followingColumns(panel));
         }},
        {&MessagesPanel::staticMetaObject,
         tr("Messages"),
         [this] {
             return showingNotes(followingColumns(new MessagesPanel(itemSources(), around_.preview.columns(),
                                                                    around_.preview.clock().localTime)));
         },
         {"miViewMessages", tr("&Messages"), tr("All messages at a glance; Ctrl+F looks for one")}},
        {&VariablesPanel::staticMetaObject,
         tr("Variables"),
         [this] { return showingNotes(new VariablesPanel(itemSources())); },
         {"miViewVariables", tr("&Variables"), tr("All variables at a glance")}},
        {&ComparisonPanel::staticMetaObject, tr("Comparison"), [this] { return makeComparison(); }},
        {&MonitorPanel::staticMetaObject,
         tr("Display Monitor"),
         [this] { return makeMonitor(); },
         {"miViewMonitor", tr("Display M&onitor"), tr("What the display shows and holds now")}},
    };
}

ProjectPanel* ProjectPanels::makeComparison() {
    auto* const panel = new ComparisonPanel(project_, notAppliedItems(), setting());
    connect(&around_.preview, &DisplayPreview::settingChanged, panel, &ComparisonPanel::followSetting);
    return showingNotes(panel);
}

ProjectPanel* ProjectPanels::makeMonitor() {
    auto* const panel = followingColumns(new MonitorPanel(
        project_, around_.preview.columns(), around_.preview.clock(), around_.modbusPort, notAppliedItems()));
    showingNotes(panel);
    shareDisplay(*panel, around_.tester);
    connect(&panel->monitor(), &DisplayMonitor::changed, &around_.preview,
            [this, &monitor = panel->monitor()] {
                around_.preview.setHeldValues(
                    monitor.isCurrent() ? std::optional(heldValues(*monitor.items())) : std::nullopt);
            });
    return panel;
}

std::function<std::vector<Item>()> ProjectPanels::notAppliedItems() const {
    return [this] { return navigator_.notAppliedItems(); };
}

PreviewSettingSource ProjectPanels::setting() const {
    return [&preview = around_.preview] { return preview.setting(); };
}

ItemSources ProjectPanels::itemSources() {
    return {project_, digests_, check_, notAppliedItems(), &around_.master};
}

template <typename Type>
Type* ProjectPanels::followingColumns(Type* panel) {
    connect(&around_.preview, &DisplayPreview::columnsChanged, panel,
            [this, panel] { panel->setColumns(around_.preview.columns()); });
    return panel;
}

template <typename Type>
Type* ProjectPanels::showingNotes(Type* panel) {
    panel->useNotes(around_.notes);
    return panel;
}

} // namespace orvista
