#include "mainwindow/Navigator.h"
#include "check/forms/FindingsPanel.h"
#include "mainwindow/PanelDock.h"
#include "tests/support/EditorFixture.h"
#include "tests/support/NamedItem.h"

#include <QDialog>
#include <QPlainTextEdit>
#include <QTabWidget>
#include <QTreeWidget>

using namespace orvista;
using namespace orvista::testing;

namespace {

/// The editor with an open panel, as it is when a row of a table leads somewhere.
struct Guided : EditorFixture {
    Guided() {
        startWithNewProject();
        project.STDMSG[11] = "CLEAR\r\nSTR(0,0,RED,BLACK)one\r\nIN GO-RIGHT";
        navigator = window->findChild<Navigator*>();
        auto* const dock = find<PanelDock>("dockPanels");
        dock->open<FindingsPanel>();
    }
    int page() const { return find<QTabWidget>("tabDetails")->currentIndex(); }
    QString node(const char* tree) const { return find<QTreeWidget>(tree)->currentItem()->text(0); }
    QPlainTextEdit* script() const { return find<QPlainTextEdit>("txtMsg"); }
    /// Shows that message and types into its script without applying it.
    void editMessage(const char* key) {
        showMessage(key);
        script()->setFocus();
        QTest::keyClicks(script(), QStringLiteral("x"));
    }

    Navigator* navigator;
};

} // namespace

class NavigatorTest : public QObject {
    Q_OBJECT
private slots:
    void goesToALineOfAMessage();
    void goesToAVariable();
    void goesToTheAddressMap();
    void inTheShownItemOnlyTheCursorMoves();
    void anEditThatWouldBeLostIsDiscardedAtTheSecondCallOnly();
    void theSecondCallCountsOnlyDirectlyAfterTheFirst();
    void anEditOnAnotherPageIsNotLostAndNotAskedFor();
    void doesNothingWithoutAProject();
    void doesNothingUnderAModalDialog();
    void namesTheItemsThatAreNotApplied();
};

void NavigatorTest::goesToALineOfAMessage() {
    Guided editor;
    editor.navigator->goTo({named("STDMSG12"), 2});
    QCOMPARE(editor.page(), 3);
    QCOMPARE(editor.node("trvMsg"), QStringLiteral("Regular12"));
    QCOMPARE(editor.text("txtMsgName"), QStringLiteral("STDMSG12"));
    QCOMPARE(editor.script()->textCursor().selectedText(), QStringLiteral("STR(0,0,RED,BLACK)one"));
    QVERIFY(editor.script()->hasFocus());
    QVERIFY(!editor.find<QWidget>("btnMsgApply")->isEnabled());
    // The message as a whole, and a line that it does not have.
    editor.navigator->goTo({named("ALTMSG20"), 0});
    QCOMPARE(editor.text("txtMsgName"), QStringLiteral("ALTMSG20"));
    QVERIFY(!editor.script()->textCursor().hasSelection());
    editor.navigator->goTo({named("ALTMSG20"), 9});
    QVERIFY(!editor.script()->textCursor().hasSelection());
}

void NavigatorTest::goesToAVariable() {
    Guided editor;
    editor.navigator->goTo({named("RegVar64"), 0});
    QCOMPARE(editor.page(), 2);
    QCOMPARE(editor.node("trvVar"), QStringLiteral("RegVar64"));
    QCOMPARE(editor.text("txtVarName"), QStringLiteral("RegVar64"));
    QVERIFY(editor.find<QWidget>("trvVar")->hasFocus());
    editor.navigator->goTo({named("CoilVar1"), 0});
    QCOMPARE(editor.text("txtVarName"), QStringLiteral("CoilVar1"));
    QCOMPARE(editor.text("txtVarType"), QStringLiteral("BOOLEAN"));
}

void NavigatorTest::goesToTheAddressMap() {
    Guided editor;
    editor.navigator->goTo({named("address map"), 0});
    QCOMPARE(editor.page(), 1);
    QVERIFY(editor.find<QWidget>("txtNewAltAddr")->hasFocus());
    QCOMPARE(editor.node("trvSystem"), QStringLiteral("Modbus Setting"));
}

void NavigatorTest::inTheShownItemOnlyTheCursorMoves() {
    Guided editor;
    editor.showMessage("R12");
    editor.script()->setPlainText(QStringLiteral("first\nsecond"));
    editor.showPage("C1");
    editor.navigator->goTo({named("STDMSG12"), 2});
    QCOMPARE(editor.page(), 3);
    QCOMPARE(editor.script()->toPlainText(), QStringLiteral("first\nsecond"));
    QCOMPARE(editor.script()->textCursor().selectedText(), QStringLiteral("second"));
    QCOMPARE(editor.notice(), QString());
    QVERIFY(editor.find<QWidget>("btnMsgApply")->isEnabled());
}

void NavigatorTest::anEditThatWouldBeLostIsDiscardedAtTheSecondCallOnly() {
    Guided editor;
    editor.editMessage("R3");
    editor.navigator->goTo({named("STDMSG12"), 1});
    QCOMPARE(editor.notice(),
             QStringLiteral("STDMSG3 has an edit that is not applied. Go there again to discard it."));
    QCOMPARE(editor.text("txtMsgName"), QStringLiteral("STDMSG3"));
    editor.navigator->goTo({named("STDMSG12"), 1});
    QCOMPARE(editor.text("txtMsgName"), QStringLiteral("STDMSG12"));
    QCOMPARE(editor.notice(), QString());
    QCOMPARE(editor.project.STDMSG[2], std::string("CLEAR"));
}

void NavigatorTest::theSecondCallCountsOnlyDirectlyAfterTheFirst() {
    Guided editor;
    editor.editMessage("R3");
    editor.navigator->goTo({named("STDMSG12"), 1});
    editor.navigator->goTo({named("STDMSG12"), 2});
    QCOMPARE(editor.text("txtMsgName"), QStringLiteral("STDMSG3"));
    editor.navigator->clear();
    QCOMPARE(editor.notice(), QString());
    editor.navigator->goTo({named("STDMSG12"), 2});
    QCOMPARE(editor.text("txtMsgName"), QStringLiteral("STDMSG3"));
    editor.navigator->goTo({named("STDMSG12"), 2});
    QCOMPARE(editor.text("txtMsgName"), QStringLiteral("STDMSG12"));
}

void NavigatorTest::anEditOnAnotherPageIsNotLostAndNotAskedFor() {
    Guided editor;
    editor.editMessage("R3");
    editor.navigator->goTo({named("RegVar2"), 0});
    QCOMPARE(editor.text("txtVarName"), QStringLiteral("RegVar2"));
    QCOMPARE(editor.notice(), QString());
    editor.navigator->goTo({named("STDMSG3"), 1});
    QVERIFY(editor.script()->toPlainText().contains(u'x'));
}

void NavigatorTest::doesNothingWithoutAProject() {
    Guided editor;
    editor.window->lifecycle().InitProject();
    editor.navigator->goTo({named("STDMSG12"), 2});
    QCOMPARE(editor.page(), 0);
    QCOMPARE(editor.text("txtMsgName"), QString());
}

void NavigatorTest::doesNothingUnderAModalDialog() {
    Guided editor;
    QDialog dialog(editor.window.get());
    dialog.setModal(true);
    dialog.show();
    editor.navigator->goTo({named("STDMSG12"), 2});
    QCOMPARE(editor.page(), 0);
    dialog.hide();
    editor.navigator->goTo({named("STDMSG12"), 2});
    QCOMPARE(editor.page(), 3);
}

void NavigatorTest::namesTheItemsThatAreNotApplied() {
    Guided editor;
    QVERIFY(editor.navigator->notAppliedItems().empty());
    editor.showPage("C2");
    editor.type("txtNewAltAddr", QStringLiteral("5"));
    editor.editMessage("E2");
    QCOMPARE(editor.navigator->notAppliedItems(), (std::vector{named("ALTMSG2"), named("address map")}));
}

QTEST_MAIN(NavigatorTest)
#include "NavigatorTest.moc"
