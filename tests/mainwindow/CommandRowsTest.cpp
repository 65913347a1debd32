#include "mainwindow/Commands.h"
#include "tests/support/ScriptedPeople.h"

#include <QAction>
#include <QDialog>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QTest>

#include <stdexcept>

using namespace orvista;
using namespace orvista::testing;

namespace {

/// Tells the action that was dressed by it whether it is lit.
struct Lamp {
    void turn(bool lit) {
        isLit = lit;
        entry->setChecked(lit);
    }
    bool isLit = false;
    QAction* entry = nullptr;
};

/// A window with two commands, one of which works on the project, and a control that does so, too.
struct Window {
    Window() {
        commands.addMenus(*window.menuBar(),
                          {{"mnuTry",
                            "&Try",
                            {row("miLook", "&Look", {Qt::Key_F7, Qt::Key_F9}, {}, EnablingRules::always,
                                 [this] { done << "look"; }),
                             row("miWork", "Work", {}, "Works on it", EnablingRules::projectWork,
                                 [this] { done << "work"; })}},
                           {.name = "mnuShow",
                            .caption = "&Show",
                            .commands = {row("miLamp", "Lamp", {}, {}, EnablingRules::always,
                                             [this] { lamp.turn(!lamp.isLit); },
                                             {.isCheckable = true,
                                              .dress = [this](QAction& entry) { lamp.entry = &entry; }}),
                                         row("miGroup", "Other Group", {}, {}, EnablingRules::always, [] {},
                                             {.beginsGroup = true})},
                            .restUnderDialogs = true}});
        commands.observe(EnablingRules::projectWork, [this](bool enabled) { pages.setEnabled(enabled); });
    }
    bool enabled(const char* name) const { return commands.action(name).isEnabled(); }

    QMainWindow window;
    QWidget pages;
    ScriptedMessages messages;
    QStringList done;
    Lamp lamp;
    Commands commands{messages, window};
};

} // namespace

class CommandRowsTest : public QObject {
    Q_OBJECT
private slots:
    void aRowBecomesAMenuEntry();
    void whatWorksOnTheProjectIsEnabledExactlyWhileThePagesAre();
    void anEntryRunsItsCommand();
    void aCommandRunsByItsNameAlsoWhileItsEntryIsDisabled();
    void anEntryIsCheckedWhileWhatItTurnsOnIsOn();
    void thereIsNoCommandOfAnotherName();
};

void CommandRowsTest::aRowBecomesAMenuEntry() {
    Window window;
    const QMenu* const menu = window.window.menuBar()->actions().at(0)->menu();
    QCOMPARE(menu->objectName(), QStringLiteral("mnuTry"));
    QCOMPARE(menu->title(), QStringLiteral("&Try"));
    QCOMPARE(menu->actions().size(), 2);
    const QAction& look = window.commands.action("miLook");
    const QAction& work = window.commands.action("miWork");
    QCOMPARE(menu->actions().at(0), &look);
    QCOMPARE(menu->actions().at(1), &work);
    QCOMPARE(look.objectName(), QStringLiteral("miLook"));
    QCOMPARE(look.text(), QStringLiteral("&Look"));
    QCOMPARE(look.shortcuts(), (QList<QKeySequence>{Qt::Key_F7, Qt::Key_F9}));
    QCOMPARE(look.toolTip(), QStringLiteral("Look"));
    QCOMPARE(work.toolTip(), QStringLiteral("Works on it"));
    QVERIFY(work.shortcuts().isEmpty());
    const QList<QAction*> shown = window.window.menuBar()->actions().at(1)->menu()->actions();
    QCOMPARE(shown.size(), 3);
    QVERIFY(shown.at(1)->isSeparator());
    QCOMPARE(shown.at(2), &window.commands.action("miGroup"));
}

void CommandRowsTest::whatWorksOnTheProjectIsEnabledExactlyWhileThePagesAre() {
    using enum ProjectTransition;
    Window window;
    const std::pair<ProjectTransition, bool> steps[] = {
        {Reset, false},   {Saved, false}, {Modified, false},       {Opened, true}, {Saved, true},
        {Modified, true}, {Reset, false}, {ProjectCommands, true}, {Saved, true},  {Reset, false}};
    for (const auto& [transition, enabled] : steps) {
        window.commands.follow(transition);
        QCOMPARE(window.enabled("miWork"), enabled);
        QCOMPARE(window.pages.isEnabled(), enabled);
        QVERIFY(window.enabled("miLook"));
    }
}

void CommandRowsTest::anEntryRunsItsCommand() {
    Window window;
    window.commands.action("miWork").trigger();
    window.commands.action("miLook").trigger();
    window.commands.follow(ProjectTransition::Reset);
    window.commands.action("miWork").trigger();
    QCOMPARE(window.done, (QStringList{"work", "look"}));
}

void CommandRowsTest::aCommandRunsByItsNameAlsoWhileItsEntryIsDisabled() {
    Window window;
    window.commands.follow(ProjectTransition::Reset);
    window.commands.run("miWork");
    QCOMPARE(window.done, QStringList{"work"});
}

void CommandRowsTest::anEntryIsCheckedWhileWhatItTurnsOnIsOn() {
    Window window;
    QAction& entry = window.commands.action("miLamp");
    entry.trigger();
    QVERIFY(window.lamp.isLit && entry.isChecked());
    {
        QDialog dialog;
        dialog.setModal(true);
        dialog.show();
        entry.trigger();
        QVERIFY(window.lamp.isLit && entry.isChecked());
    }
    entry.trigger();
    QVERIFY(!window.lamp.isLit && !entry.isChecked());
}

void CommandRowsTest::thereIsNoCommandOfAnotherName() {
    Window window;
    QVERIFY_THROWS_EXCEPTION(std::out_of_range, window.commands.action("mnuTry"));
    QVERIFY_THROWS_EXCEPTION(std::out_of_range, window.commands.run(""));
}

QTEST_MAIN(CommandRowsTest)
#include "CommandRowsTest.moc"
