#include "mainwindow/FindingCommands.h"

#include "check/forms/FindingsPanel.h"
#include "mainwindow/Navigator.h"
#include "mainwindow/PanelDock.h"
#include "mainwindow/ProjectChanges.h"

#include <utility>

namespace orvista {

FindingCommands::FindingCommands(ProjectChanges& changes, const Navigator& navigator, PanelDock& dock,
                                 QObject* parent)
    : QObject(parent), changes_(changes), navigator_(navigator), dock_(dock) {
    connect(&dock, &PanelDock::made, this, &FindingCommands::serve);
}

void FindingCommands::serve(ProjectPanel& made) {
    auto* const panel = qobject_cast<FindingsPanel*>(&made);
    if (!panel)
        return;
    connect(panel, &FindingsPanel::noticeAsked, this, &FindingCommands::showNotice);
    connect(panel, &FindingsPanel::changesWanted, this,
            [this, panel](const QString& step, const std::vector<Change>& changes) {
                if (changes_.change(step, changes))
                    panel->check();
            });
}

void FindingCommands::check() {
    const bool isShown = qobject_cast<FindingsPanel*>(dock_.shownPanel()) != nullptr;
    auto& panel = dock_.open<FindingsPanel>();
    panel.check();
    if (isShown)
        panel.enter();
}

void FindingCommands::goOn(int step) {
    auto& panel = dock_.open<FindingsPanel>();
    panel.check();
    const QString said = panel.goOn(step);
    // Then the line says why this is not the place to go to.
    if (navigator_.isWaiting())
        panel.goAgain(step);
    else
        showNotice(said);
}

void FindingCommands::showNotice(const QString& text) {
    if (text.isEmpty() && !std::exchange(hasSaid_, false))
        return;
    hasSaid_ = !text.isEmpty();
    dock_.showNotice(text);
}

} // namespace orvista
