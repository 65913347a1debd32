#include "mainwindow/ItemPanels.h"

#include "display/forms/DisplayPreview.h"
#include "items/forms/MessagesPanel.h"
#include "items/forms/VariablesPanel.h"
#include "mainwindow/Navigator.h"
#include "mainwindow/PanelDock.h"

namespace orvista {

namespace {

constexpr const char* messagesPanel = "messages";
constexpr const char* variablesPanel = "variables";

} // namespace

ItemPanels::ItemPanels(const Project& project, FolderCheck& check, DisplayPreview& preview,
                       Navigator& navigator, PanelDock& dock)
    : QObject(&dock),
      project_(project),
      check_(check),
      preview_(preview),
      navigator_(navigator),
      dock_(dock) {
    dock.addPanel({messagesPanel, tr("Messages"), [this] { return makeMessages(); }});
    dock.addPanel({variablesPanel, tr("Variables"), [this] { return makeVariables(); }});
}

ItemSources ItemPanels::sources() {
    return {project_, digests_, check_, [this] { return navigator_.notAppliedItems(); }};
}

void ItemPanels::connectPanel(ItemPanel& panel) {
    connect(&panel, &ItemPanel::placeChosen, &navigator_, &Navigator::goTo);
    connect(&panel, &ItemPanel::rowLeft, &navigator_, &Navigator::forget);
    emit made(panel);
}

QWidget* ItemPanels::makeMessages() {
    messages_ = new MessagesPanel(sources(), preview_.columns(), preview_.clock().localTime);
    connectPanel(*messages_);
    connect(&preview_, &DisplayPreview::columnsChanged, messages_,
            [this] { messages_->setColumns(preview_.columns()); });
    return messages_;
}

QWidget* ItemPanels::makeVariables() {
    variables_ = new VariablesPanel(sources());
    connectPanel(*variables_);
    return variables_;
}

std::vector<CommandRow> ItemPanels::viewEntries() {
    return {{.name = "miViewMessages",
             .caption = tr("&Messages"),
             .toolTip = tr("All messages at a glance; Ctrl+F looks for one"),
             .enabling = EnablingRules::always,
             .run = [this] { miViewMessages_Click(); }},
            {.name = "miViewVariables",
             .caption = tr("&Variables"),
             .toolTip = tr("All variables at a glance"),
             .enabling = EnablingRules::always,
             .run = [this] { miViewVariables_Click(); }}};
}

void ItemPanels::miViewMessages_Click() {
    dock_.open(messagesPanel);
}

void ItemPanels::miViewVariables_Click() {
    dock_.open(variablesPanel);
}

void ItemPanels::enterMessagesFilter() {
    dock_.open(messagesPanel);
    messages_->enterFilter();
}

std::vector<ItemPanel*> ItemPanels::panels() const {
    std::vector<ItemPanel*> panels;
    if (messages_)
        panels.push_back(messages_);
    if (variables_)
        panels.push_back(variables_);
    return panels;
}

ItemPanel* ItemPanels::shown() const {
    for (ItemPanel* const panel : panels())
        if (panel->isVisible())
            return panel;
    return nullptr;
}

const MessageDigests& ItemPanels::digests() {
    digests_.update(project_);
    return digests_;
}

void ItemPanels::projectChanged() {
    for (ItemPanel* const panel : panels())
        panel->follow();
}

void ItemPanels::markNotApplied() {
    for (ItemPanel* const panel : panels())
        panel->markNotApplied();
}

} // namespace orvista
