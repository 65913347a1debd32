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

/// A window with two commands, one of which works on the project, and a control that does so, too.
struct Window {
    Window() {
        commands.addMenus(
            *window.menuBar(),
            {{"mnuTry",
              "&Try",
              {{"miLook", "&Look", Qt::Key_F7, {}, EnablingRules::always, [this] { done << "look"; }},
               {"miWork",
                "Work",
                {},
                "Works on it",
                EnablingRules::projectWork,
                [this] { done << "work"; }}}},
             {.name = "mnuShow",
              .caption = "&Show",
              .commands = {{.name = "miLamp",
                            .caption = "Lamp",
                            .enabling = EnablingRules::always,
                            .run = [this] { turnLamp(!isLit); },
                            .isCheckable = true}},
              .restUnderDialogs = true}});
        commands.observe(EnablingRules::projectWork, [this](bool enabled) { pages.setEnabled(enabled); });
    }
    bool enabled(const char* name) const { return commands.action(name).isEnabled(); }
    void turnLamp(bool lit) {
        isLit = lit;
        commands.action("miLamp").setChecked(lit);
    }

    QMainWindow window;
    QWidget pages;
    ScriptedMessages messages;
    QStringList done;
    bool isLit = false;
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
    QCOMPARE(look.shortcut(), QKeySequence(Qt::Key_F7));
    QCOMPARE(look.toolTip(), QStringLiteral("Look"));
    QCOMPARE(work.toolTip(), QStringLiteral("Works on it"));
    QVERIFY(work.shortcut().isEmpty());
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
    QVERIFY(window.isLit && entry.isChecked());
    {
        QDialog dialog;
        dialog.setModal(true);
        dialog.show();
        entry.trigger();
        QVERIFY(window.isLit && entry.isChecked());
    }
    entry.trigger();
    QVERIFY(!window.isLit && !entry.isChecked());
}

void CommandRowsTest::thereIsNoCommandOfAnotherName() {
    Window window;
    QVERIFY_THROWS_EXCEPTION(std::out_of_range, window.commands.action("mnuTry"));
    QVERIFY_THROWS_EXCEPTION(std::out_of_range, window.commands.run(""));
}

QTEST_MAIN(CommandRowsTest)
#include "CommandRowsTest.moc"
