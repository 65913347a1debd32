#pragma once

#include "model/CommandEnabling.h"
#include "model/People.h"

#include <QKeySequence>
#include <QList>
#include <QObject>

#include <functional>
#include <string_view>
#include <vector>

class QAction;
class QMenuBar;
class QWidget;

namespace orvista {

/// What only some commands have.
struct CommandTail {
    bool isCheckable = false; ///< whoever shows what it turns on and off also checks its action
    bool beginsGroup = false; ///< a line stands above it
    /// Has the command's action follow a state, once it is there.
    std::function<void(QAction&)> dress = nullptr;
};

/// A command of the program: everything that shows it and everything that runs it goes back to this row.
struct CommandRow {
    const char* name; ///< of its menu entry
    QString caption;
    QList<QKeySequence> keys;
    QString toolTip; ///< empty for the caption
    EnablingRule enabling;
    std::function<void()> run;
    CommandTail tail = {};
};

CommandRow row(const char* name, const QString& caption, const QList<QKeySequence>& keys,
               const QString& toolTip, const EnablingRule& enabling, std::function<void()> run,
               CommandTail tail = {});

/// What a row does by a member function of an object, which must outlive the row.
template <typename Type>
std::function<void()> handler(Type* object, void (Type::*click)()) {
    return [object, click] { (object->*click)(); };
}

struct MenuRow {
    const char* name;
    QString caption;
    std::vector<CommandRow> commands;
    /// True for commands that do nothing while a modal dialog or a transfer is open.
    bool restUnderDialogs = false;
};

/// The commands of the main window. Each has one action, which its menu shows and a toolbar may observe.
class Commands final : public QObject {
    Q_OBJECT
public:
    /// \param messages tell of a number that a command could not take
    Commands(Messages& messages, QWidget& window);

    /// Adds the menus and their commands to `bar`, in the order of the rows. A menu without commands stays
    /// out of sight.
    void addMenus(QMenuBar& bar, const std::vector<MenuRow>& menus);

    /// The action of that command. \throws std::out_of_range when there is no such command
    QAction& action(std::string_view name) const;
    /// Does what the command does, whether its menu entry is enabled or not: the toolbar's Upload can be.
    /// \throws std::out_of_range when there is no such command
    void run(std::string_view name);

    /// Registers a control that is not a menu entry; `rule` enables and disables it. Assumed enabled now.
    void observe(const EnablingRule& rule, std::function<void(bool)> setEnabled);
    void follow(ProjectTransition transition);

private:
    struct Command {
        CommandRow row;
        QAction* action = nullptr;
        bool restsUnderDialogs = false;
    };
    struct Observer {
        EnablingRule rule;
        bool enabled;
        std::function<void(bool)> setEnabled;
    };

    QAction* add(const CommandRow& row, bool restsUnderDialogs);
    const Command& command(std::string_view name) const;

    Messages& messages_;
    QWidget& window_;
    std::vector<Command> commands_;
    std::vector<Observer> observers_;
};

} // namespace orvista
