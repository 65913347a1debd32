#include "mainwindow/DiscardedScripts.h"
#include "mainwindow/MessageListPage.h"
#include "tests/support/EditorFixture.h"
#include "tests/support/NamedItem.h"
#include "widgets/DeviceTextEdit.h"

#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QTabWidget>

using namespace orvista;
using namespace orvista::testing;

namespace {

const QDateTime noon(QDate(2026, 11, 21), QTime(12, 0));

struct Editor : EditorFixture {
    Editor() { startWithNewProject(); }

    DeviceTextEdit* box() const { return find<DeviceTextEdit>("txtMsg"); }
    void edit(const char* key, const QString& text) const {
        showMessage(key);
        box()->setFocus();
        box()->selectAll();
        QTest::keyClicks(box(), text);
    }
    /// The entries of the menu, as they are when it opens.
    QList<QAction*> entries() const {
        auto* const menu = find<QMenu>("mnuEditRestoreScript");
        emit menu->aboutToShow();
        return menu->actions();
    }
    /// Their items, in their order.
    QStringList items() const {
        QStringList names;
        for (const QAction* const entry : entries())
            names << entry->text().section(u',', 0, 0);
        return names;
    }
    bool applyEnabled() const { return find<QPushButton>("btnMsgApply")->isEnabled(); }
};

} // namespace

class DiscardedScriptsTest : public QObject {
    Q_OBJECT
private slots:
    void theLastTwentyAreKept();
    void sixteenMegabytesAreKept();
    void theSameScriptIsKeptOnce();
    void aClickOnAnotherRowKeepsWhatItThrowsAway();
    void anAppliedOrUneditedScriptIsNotKept();
    void newOpenAndDownloadKeepWhatTheyThrowAway();
    void restoringIsTyping();
    void restoringFromAnotherPageLeadsThere();
    void anEditInTheWayIsDiscardedAtTheSecondChoiceOnly();
    void worksByKeyboardAlone();
    void namesTheItemAndTheTime();
    void aLongScriptThatWasJustEditedIsKept();
    void isEnabledWhileThereIsAProject();
};

void DiscardedScriptsTest::theLastTwentyAreKept() {
    DiscardedScripts scripts;
    for (int i = 1; i <= 21; ++i)
        scripts.add(named("STDMSG1"), std::to_string(i), noon);
    QCOMPARE(scripts.entries().size(), std::size_t{20});
    QCOMPARE(scripts.entries().front().script, std::string("21"));
    QCOMPARE(scripts.entries().back().script, std::string("2"));
}

void DiscardedScriptsTest::sixteenMegabytesAreKept() {
    constexpr std::size_t megabyte = std::size_t{1} << 20;
    DiscardedScripts scripts;
    scripts.add(named("STDMSG1"), std::string(6 * megabyte, 'a'), noon);
    scripts.add(named("STDMSG1"), std::string(10 * megabyte, 'b'), noon);
    QCOMPARE(scripts.entries().size(), std::size_t{2});
    scripts.add(named("STDMSG1"), "c", noon);
    QCOMPARE(scripts.entries().size(), std::size_t{2});
    QCOMPARE(scripts.entries().back().script.front(), 'b');
    scripts.add(named("STDMSG1"), std::string(16 * megabyte + 1, 'd'), noon);
    QVERIFY(scripts.entries().empty());
    scripts.add(named("STDMSG1"), "e", noon);
    QCOMPARE(scripts.entries().size(), std::size_t{1});
    // One that comes again is not counted twice.
    for (int i = 0; i < 3; ++i)
        scripts.add(named("STDMSG2"), std::string(10 * megabyte, 'f'), noon);
    QCOMPARE(scripts.entries().size(), std::size_t{2});
    scripts.add(named("STDMSG2"), std::string(16 * megabyte, 'g'), noon);
    QCOMPARE(scripts.entries().size(), std::size_t{1});
}

void DiscardedScriptsTest::theSameScriptIsKeptOnce() {
    DiscardedScripts scripts;
    scripts.add(named("STDMSG1"), "a", noon);
    scripts.add(named("STDMSG2"), "a", noon);
    scripts.add(named("STDMSG1"), "a", noon.addSecs(60));
    QCOMPARE(scripts.entries().size(), std::size_t{2});
    QCOMPARE(scripts.entries().front().item, named("STDMSG1"));
    QCOMPARE(scripts.entries().front().time, noon.addSecs(60));
}

void DiscardedScriptsTest::aClickOnAnotherRowKeepsWhatItThrowsAway() {
    const Editor editor;
    editor.edit("R3", "CLEAR three");
    editor.edit("E2", "CLEAR two");
    QCOMPARE(editor.items(), QStringList{"STDMSG3"});
    editor.clickNode("trvMsg", "EMERGENCY"); // the group
    QCOMPARE(editor.items(), (QStringList{"ALTMSG2", "STDMSG3"}));
}

void DiscardedScriptsTest::anAppliedOrUneditedScriptIsNotKept() {
    const Editor editor;
    editor.edit("R3", "CLEAR three");
    editor.click("btnMsgApply");
    editor.showMessage("R4");
    editor.showMessage("R5");
    editor.edit("R6", "x");
    QTest::keyClick(editor.box(), Qt::Key_Backspace); // nothing is left of it
    editor.showMessage("R7");
    const QList<QAction*> entries = editor.entries();
    QCOMPARE(entries.size(), 1);
    QCOMPARE(entries.front()->text(), QStringLiteral("Nothing was thrown away"));
    QVERIFY(!entries.front()->isEnabled());
}

void DiscardedScriptsTest::newOpenAndDownloadKeepWhatTheyThrowAway() {
    Editor editor;
    editor.trigger("miFileSave");
    editor.edit("R1", "CLEAR one");
    editor.newProject("Line4"); // not asked: nothing was applied
    QCOMPARE(editor.items(), QStringList{"STDMSG1"});
    editor.trigger("miFileSave");
    editor.edit("R2", "CLEAR two");
    editor.openProject("Line3");
    QCOMPARE(editor.items(), (QStringList{"STDMSG2", "STDMSG1"}));
    editor.edit("R3", "CLEAR three");
    editor.window->lifecycle().InitProject(); // as a download does
    editor.window->lifecycle().adoptDownloadedProject(editor.projectNamed("Line5"));
    QCOMPARE(editor.items(), (QStringList{"STDMSG3", "STDMSG2", "STDMSG1"}));
    editor.entries().at(1)->trigger();
    QCOMPARE(editor.text("txtMsgName"), QStringLiteral("STDMSG2"));
    QCOMPARE(editor.box()->bytes(), std::string("CLEAR two"));
}

void DiscardedScriptsTest::restoringIsTyping() {
    Editor editor;
    editor.edit("R3", "CLEAR three");
    editor.showMessage("R4");
    editor.trigger("miFileSave");
    editor.entries().front()->trigger();
    QCOMPARE(editor.text("txtMsgName"), QStringLiteral("STDMSG3"));
    QCOMPARE(editor.box()->bytes(), std::string("CLEAR three"));
    QVERIFY(editor.applyEnabled());
    QVERIFY(editor.window->messagePage().findChild<QLabel*>("lblNotApplied")->isVisible());
    QVERIFY(editor.box()->hasFocus());
    QCOMPARE(editor.project.STDMSG[2], std::string("CLEAR"));
    QVERIFY(!editor.project.modified);
    QTest::keySequence(editor.box(), QKeySequence::Undo);
    QCOMPARE(editor.box()->bytes(), std::string("CLEAR"));
    QCOMPARE(editor.items(), QStringList{"STDMSG3"}); // it may be wanted once more
}

void DiscardedScriptsTest::restoringFromAnotherPageLeadsThere() {
    const Editor editor;
    editor.edit("R3", "CLEAR three");
    editor.showMessage("R4");
    editor.showPage("C1");
    editor.entries().front()->trigger();
    QCOMPARE(editor.find<QTabWidget>("tabDetails")->currentIndex(), 3);
    QCOMPARE(editor.box()->bytes(), std::string("CLEAR three"));
}

void DiscardedScriptsTest::anEditInTheWayIsDiscardedAtTheSecondChoiceOnly() {
    const Editor editor;
    editor.edit("R3", "CLEAR three");
    editor.edit("R4", "CLEAR four");
    editor.edit("R5", "CLEAR five");
    QCOMPARE(editor.items(), (QStringList{"STDMSG4", "STDMSG3"}));
    editor.entries().at(0)->trigger();
    QCOMPARE(editor.box()->bytes(), std::string("CLEAR five"));
    QCOMPARE(editor.notice(),
             QStringLiteral("STDMSG5 has an edit that is not applied. Go there again to discard it."));
    editor.entries().at(1)->trigger(); // another one
    QCOMPARE(editor.box()->bytes(), std::string("CLEAR five"));
    editor.entries().at(1)->trigger();
    QCOMPARE(editor.box()->bytes(), std::string("CLEAR three"));
    QCOMPARE(editor.items(), (QStringList{"STDMSG5", "STDMSG4", "STDMSG3"}));
    // In the shown item nothing is lost: the box undoes it.
    editor.edit("R4", "CLEAR other");
    editor.entries().at(2)->trigger();
    QCOMPARE(editor.text("txtMsgName"), QStringLiteral("STDMSG4"));
    QCOMPARE(editor.box()->bytes(), std::string("CLEAR four"));
    QTest::keySequence(editor.box(), QKeySequence::Undo);
    QCOMPARE(editor.box()->bytes(), std::string("CLEAR other"));
}

void DiscardedScriptsTest::worksByKeyboardAlone() {
    const Editor editor;
    editor.edit("R3", "CLEAR three");
    editor.showMessage("R4");
    QTest::keyClick(editor.window.get(), Qt::Key_E, Qt::AltModifier);
    auto* const edit = editor.find<QMenu>("mnuEdit");
    QTRY_VERIFY(edit->isVisible());
    QTest::keyClick(edit, Qt::Key_S);
    auto* const menu = editor.find<QMenu>("mnuEditRestoreScript");
    QTRY_VERIFY(menu->isVisible());
    if (!menu->activeAction())
        QTest::keyClick(menu, Qt::Key_Down);
    QTest::keyClick(menu, Qt::Key_Return);
    QCOMPARE(editor.box()->bytes(), std::string("CLEAR three"));
}

void DiscardedScriptsTest::namesTheItemAndTheTime() {
    const Editor editor;
    editor.edit("R3", "CLEAR three");
    const QTime before = QTime::currentTime();
    editor.showMessage("R4");
    const QTime after = QTime::currentTime();
    const auto named = [](QTime time) {
        return QStringLiteral("STDMSG3, ") + QLocale().toString(time, QLocale::ShortFormat);
    };
    const QAction* const entry = editor.entries().front();
    QVERIFY(entry->text() == named(before) || entry->text() == named(after));
    QCOMPARE(entry->toolTip(), QStringLiteral("CLEAR three"));
    editor.edit("R5", QString(400, u'x'));
    editor.showMessage("R6");
    QCOMPARE(editor.entries().front()->toolTip(), QString(400, u'x'));
    editor.edit("R5", QString(401, u'x'));
    editor.showMessage("R6");
    QCOMPARE(editor.entries().front()->toolTip(), QString(400, u'x') + u'…');
}

void DiscardedScriptsTest::aLongScriptThatWasJustEditedIsKept() {
    Editor editor;
    editor.project.STDMSG[2] = std::string(100'000, 'x');
    editor.showMessage("R3");
    editor.trigger("miFileSave");
    editor.box()->setFocus();
    QTest::keyClicks(editor.box(), "y");
    editor.newProject("Line4"); // before it was compared
    QCOMPARE(editor.items(), QStringList{"STDMSG3"});
}

void DiscardedScriptsTest::isEnabledWhileThereIsAProject() {
    Editor editor;
    QVERIFY(editor.enabled("miEditRestoreScript"));
    editor.trigger("miFileSave");
    editor.trigger("miFileNew"); // the dialog is cancelled
    QVERIFY(!editor.enabled("miEditRestoreScript"));
}

QTEST_MAIN(DiscardedScriptsTest)
#include "DiscardedScriptsTest.moc"
