#include "mainwindow/Commands.h"

#include "mainwindow/Guard.h"
#include "widgets/ModalDialogs.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

#include <algorithm>
#include <stdexcept>

namespace orvista {

CommandRow row(const char* name, const QString& caption, const QList<QKeySequence>& keys,
               const QString& toolTip, const EnablingRule& enabling, std::function<void()> run,
               CommandTail tail) {
    return {name, caption, keys, toolTip, enabling, std::move(run), std::move(tail)};
}

Commands::Commands(Messages& messages, QWidget& window)
    : QObject(&window), messages_(messages), window_(window) {}

void Commands::addMenus(QMenuBar& bar, const std::vector<MenuRow>& menus) {
    for (const MenuRow& row : menus) {
        QMenu* const menu = bar.addMenu(row.caption);
        menu->setObjectName(QString::fromLatin1(row.name));
        menu->setToolTipsVisible(row.restUnderDialogs);
        menu->menuAction()->setVisible(!row.commands.empty());
        for (const CommandRow& command : row.commands) {
            if (command.tail.beginsGroup)
                menu->addSeparator();
            menu->addAction(add(command, row.restUnderDialogs));
        }
    }
}

QAction* Commands::add(const CommandRow& row, bool restsUnderDialogs) {
    auto* const action = new QAction(row.caption, &window_);
    action->setObjectName(QString::fromLatin1(row.name));
    action->setShortcuts(row.keys);
    action->setCheckable(row.tail.isCheckable);
    if (!row.toolTip.isEmpty())
        action->setToolTip(row.toolTip);
    // Elsewhere Qt would move some of them to other menus by their captions.
    action->setMenuRole(QAction::NoRole);
    connect(action, &QAction::triggered, this, [this, action, name = row.name](bool checked) {
        // Qt has checked it ahead of the command, which may have nothing to do now.
        if (action->isCheckable())
            action->setChecked(!checked);
        run(name);
    });
    observe(row.enabling, [action](bool enabled) { action->setEnabled(enabled); });
    commands_.push_back({row, action, restsUnderDialogs});
    if (row.tail.dress)
        row.tail.dress(*action);
    return action;
}

QAction& Commands::action(std::string_view name) const {
    return *command(name).action;
}

void Commands::run(std::string_view name) {
    const Command& found = command(name);
    if (!found.restsUnderDialogs || !isModalDialogOpen())
        runGuarded(messages_, found.row.run);
}

const Commands::Command& Commands::command(std::string_view name) const {
    const auto found = std::find_if(commands_.begin(), commands_.end(),
                                    [name](const Command& command) { return command.row.name == name; });
    if (found == commands_.end())
        throw std::out_of_range("no command " + std::string(name));
    return *found;
}

void Commands::observe(const EnablingRule& rule, std::function<void(bool)> setEnabled) {
    observers_.push_back({rule, true, std::move(setEnabled)});
}

void Commands::follow(ProjectTransition transition) {
    for (Observer& observer : observers_) {
        observer.enabled = observer.rule.enabledAfter(transition, observer.enabled);
        observer.setEnabled(observer.enabled);
    }
}

} // namespace orvista
