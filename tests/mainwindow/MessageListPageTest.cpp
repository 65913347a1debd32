#include "mainwindow/ItemTree.h"
#include "tests/support/BoxInput.h"
#include "tests/support/EditorFixture.h"
#include "tests/support/ModalDriver.h"
#include "widgets/DeviceTextEdit.h"

#include <QDialog>
#include <QListWidget>
#include <QPushButton>

using namespace orvista;
using namespace orvista::testing;

namespace {

/// What the wizard makes of the text Hi when nothing else is chosen.
const std::string hiPage = "CLEAR\r\nTEXT 0 0 RED BLACK \"Hi\"\r\nIN GO-LEFT 1 50\r\nACT STILL 1000\r\n"
                           "OUT GO-LEFT 1 50";

} // namespace

class MessageListPageTest : public QObject {
    Q_OBJECT
private slots:
    void startsEmptyAndDisabled();
    void showsARegularMessage();
    void showsAnEmergencyMessage();
    void aGroupEmptiesAndDisables();
    void typingEnablesApplyAndEmptyingKeepsIt();
    void applyStores();
    void applyingAnEmptyScriptStoresClear();
    void applyTwice();
    void anotherNodeDiscardsTheEdit();
    void clickingTheCurrentNodeDiscardsTheEdit();
    void theWizardReplacesClear();
    void theWizardAppendsToAnyOtherScript_data();
    void theWizardAppendsToAnyOtherScript();
    void cancellingTheWizardChangesNothing();
    void theWizardCanBeUndone();
    void everyByteSurvivesShowingAndApplying();
    void uneditedScriptsAreStoredAsTheyWere_data();
    void uneditedScriptsAreStoredAsTheyWere();
    void tabLeavesTheScript();
    void theUnusedListsAreHidden();

private:
    static std::string script(const EditorFixture& editor) {
        return editor.find<DeviceTextEdit>("txtMsg")->bytes();
    }
    static bool canApply(const EditorFixture& editor) {
        return editor.find<QPushButton>("btnMsgApply")->isEnabled();
    }
    static void typeScript(const EditorFixture& editor, const QString& text) {
        auto* const box = editor.find<DeviceTextEdit>("txtMsg");
        QVERIFY(box->isEnabled());
        QTest::keyClicks(box, text);
    }
    static void emptyScript(const EditorFixture& editor) {
        auto* const box = editor.find<DeviceTextEdit>("txtMsg");
        box->selectAll();
        QTest::keyClick(box, Qt::Key_Delete);
    }
    static void runWizard(EditorFixture& editor, const char* button) {
        onModal(QStringLiteral("frmMessageEdit"), [button](QWidget* wizard) {
            QTest::keyClicks(wizard->findChild<QLineEdit*>("txtText"), QStringLiteral("Hi"));
            QTest::mouseClick(wizard->findChild<QPushButton*>(QString::fromLatin1(button)), Qt::LeftButton);
        });
        editor.click("btnEditMessage");
        QVERIFY(allModalsServed());
    }
};

void MessageListPageTest::startsEmptyAndDisabled() {
    EditorFixture editor;
    editor.startWithNewProject();
    QCOMPARE(script(editor), std::string());
    QVERIFY(!editor.find<DeviceTextEdit>("txtMsg")->isEnabled());
    QVERIFY(!editor.find<QPushButton>("btnEditMessage")->isEnabled());
    QVERIFY(!canApply(editor));
}

void MessageListPageTest::showsARegularMessage() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.project.STDMSG[6] = "seven";
    editor.showMessage("R7");
    QCOMPARE(editor.text("txtMsgName"), QStringLiteral("STDMSG7"));
    QCOMPARE(editor.text("txtMsgSno"), QStringLiteral(" 7"));
    QCOMPARE(script(editor), std::string("seven"));
    QVERIFY(editor.find<DeviceTextEdit>("txtMsg")->isEnabled());
    QVERIFY(editor.find<QPushButton>("btnEditMessage")->isEnabled());
    QVERIFY(!canApply(editor));
    editor.showMessage("R40");
    QCOMPARE(editor.text("txtMsgName"), QStringLiteral("STDMSG40"));
    QCOMPARE(editor.text("txtMsgSno"), QStringLiteral(" 40"));
}

void MessageListPageTest::showsAnEmergencyMessage() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.project.ALTMSG[6] = "fire";
    editor.showMessage("E7");
    QCOMPARE(editor.text("txtMsgName"), QStringLiteral("ALTMSG7"));
    QCOMPARE(editor.text("txtMsgSno"), QStringLiteral("7"));
    QCOMPARE(script(editor), std::string("fire"));
    QVERIFY(!canApply(editor));
}

void MessageListPageTest::aGroupEmptiesAndDisables() {
    EditorFixture editor;
    editor.startWithNewProject();
    for (const char* group : {"REGULAR", "EMERGENCY"}) {
        editor.showMessage("R7");
        typeScript(editor, QStringLiteral("x"));
        editor.clickNode("trvMsg", group);
        QCOMPARE(script(editor), std::string());
        QCOMPARE(editor.text("txtMsgName") + editor.text("txtMsgSno"), QString());
        QVERIFY(!editor.find<DeviceTextEdit>("txtMsg")->isEnabled());
        QVERIFY(!editor.find<QPushButton>("btnEditMessage")->isEnabled());
        QVERIFY(!canApply(editor));
    }
}

void MessageListPageTest::typingEnablesApplyAndEmptyingKeepsIt() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.showMessage("R1");
    emptyScript(editor);
    QVERIFY(!canApply(editor));
    typeScript(editor, QStringLiteral("x"));
    QVERIFY(canApply(editor));
    emptyScript(editor);
    QVERIFY(canApply(editor));
}

void MessageListPageTest::applyStores() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.trigger("SAVE");
    editor.showMessage("R40");
    typeScript(editor, QStringLiteral("x"));
    QTest::keyClick(editor.find<DeviceTextEdit>("txtMsg"), Qt::Key_Return);
    QCOMPARE(editor.project.STDMSG[39], std::string("CLEAR"));
    QVERIFY(!editor.project.modified);
    editor.click("btnMsgApply");
    QCOMPARE(editor.project.STDMSG[39], std::string("x\r\nCLEAR"));
    QVERIFY(editor.project.modified);
    QVERIFY(!canApply(editor));

    editor.showMessage("E20");
    typeScript(editor, QStringLiteral("y"));
    editor.click("btnMsgApply");
    QCOMPARE(editor.project.ALTMSG[19], std::string("yCLEAR"));
    QCOMPARE(editor.project.STDMSG[19], std::string("CLEAR"));
}

void MessageListPageTest::applyingAnEmptyScriptStoresClear() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.showMessage("R2");
    editor.project.STDMSG[1] = "old";
    typeScript(editor, QStringLiteral("x"));
    emptyScript(editor);
    editor.click("btnMsgApply");
    QCOMPARE(editor.project.STDMSG[1], std::string("CLEAR"));
    QCOMPARE(script(editor), std::string("CLEAR"));
    QVERIFY(!canApply(editor));
}

void MessageListPageTest::applyTwice() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.showMessage("R2");
    for (const char* expected : {"xCLEAR", "xxCLEAR"}) {
        typeScript(editor, QStringLiteral("x"));
        editor.click("btnMsgApply");
        QCOMPARE(editor.project.STDMSG[1], std::string(expected));
    }
}

void MessageListPageTest::anotherNodeDiscardsTheEdit() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.showMessage("R2");
    typeScript(editor, QStringLiteral("x"));
    QTest::keyClick(editor.find<ItemTree>("trvMsg"), Qt::Key_Down);
    QCOMPARE(editor.text("txtMsgName"), QStringLiteral("STDMSG3"));
    QVERIFY(!canApply(editor));
    editor.clickNode("trvMsg", "R2");
    QCOMPARE(script(editor), std::string("CLEAR"));
    QCOMPARE(editor.project.STDMSG[1], std::string("CLEAR"));
}

void MessageListPageTest::clickingTheCurrentNodeDiscardsTheEdit() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.showMessage("R2");
    typeScript(editor, QStringLiteral("x"));
    editor.clickNode("trvMsg", "R2");
    QCOMPARE(script(editor), std::string("CLEAR"));
    QVERIFY(!canApply(editor));
}

void MessageListPageTest::theWizardReplacesClear() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.showMessage("R3");
    runWizard(editor, "btnOK");
    QCOMPARE(script(editor), hiPage);
    QVERIFY(canApply(editor));
    QCOMPARE(editor.project.STDMSG[2], std::string("CLEAR"));
    editor.click("btnMsgApply");
    QCOMPARE(editor.project.STDMSG[2], hiPage);
    runWizard(editor, "btnOK");
    editor.click("btnMsgApply");
    QCOMPARE(editor.project.STDMSG[2], hiPage + "\r\n" + hiPage);
}

void MessageListPageTest::theWizardAppendsToAnyOtherScript_data() {
    QTest::addColumn<QByteArray>("before");
    QTest::newRow("small letters") << QByteArray("clear");
    QTest::newRow("blank behind") << QByteArray("CLEAR ");
    QTest::newRow("line end behind") << QByteArray("CLEAR\r\n");
    QTest::newRow("as read from a file") << QByteArray("CLEAR\r\nTEXT\r\n");
    QTest::newRow("lone CR at the end") << QByteArray("CLEAR\r");
    QTest::newRow("empty") << QByteArray();
}

void MessageListPageTest::theWizardAppendsToAnyOtherScript() {
    QFETCH(const QByteArray, before);
    EditorFixture editor;
    editor.startWithNewProject();
    editor.project.STDMSG[2] = before.toStdString();
    editor.showMessage("R3");
    runWizard(editor, "btnOK");
    QCOMPARE(script(editor), before.toStdString() + "\r\n" + hiPage);
    QVERIFY(canApply(editor));
}

void MessageListPageTest::cancellingTheWizardChangesNothing() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.showMessage("R3");
    runWizard(editor, "btnCancel");
    QCOMPARE(script(editor), std::string("CLEAR"));
    QVERIFY(!canApply(editor));
    typeScript(editor, QStringLiteral("x"));
    runWizard(editor, "btnCancel");
    QCOMPARE(script(editor), std::string("xCLEAR"));
    QVERIFY(canApply(editor));
}

void MessageListPageTest::theWizardCanBeUndone() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.showMessage("R3");
    runWizard(editor, "btnOK");
    QTest::keySequence(editor.find<DeviceTextEdit>("txtMsg"), QKeySequence::Undo);
    QCOMPARE(script(editor), std::string("CLEAR"));
}

void MessageListPageTest::everyByteSurvivesShowingAndApplying() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.project.STDMSG[2] = everyByte();
    editor.project.ALTMSG[2] = everyByte() + everyByte();
    editor.showMessage("R3");
    QCOMPARE(script(editor), everyByte());
    typeScript(editor, QStringLiteral("x"));
    editor.click("btnMsgApply");
    QCOMPARE(editor.project.STDMSG[2], "x" + everyByte());
    editor.showMessage("E3");
    typeScript(editor, QStringLiteral("y"));
    editor.click("btnMsgApply");
    QCOMPARE(editor.project.ALTMSG[2], "y" + everyByte() + everyByte());
}

void MessageListPageTest::uneditedScriptsAreStoredAsTheyWere_data() {
    QTest::addColumn<QByteArray>("script");
    QTest::newRow("trailing line end") << QByteArray("CLEAR\r\nTEXT\r\n");
    QTest::newRow("empty lines") << QByteArray("\r\n\r\nA\r\n\r\n");
    QTest::newRow("lone ends") << QByteArray("A\nB\rC\n\rD");
    QTest::newRow("no-break spaces") << QByteArray("\xA0 A \xA0\xA0");
    QTest::newRow("beyond 32767") << QByteArray(40'000, 'x');
    QTest::newRow("every byte") << QByteArray::fromStdString(everyByte());
}

void MessageListPageTest::uneditedScriptsAreStoredAsTheyWere() {
    QFETCH(const QByteArray, script);
    EditorFixture editor;
    editor.startWithNewProject();
    editor.project.STDMSG[2] = script.toStdString();
    editor.showMessage("R3");
    // Typing and taking it back enables Apply on the text as it was.
    typeScript(editor, QStringLiteral("x"));
    QTest::keyClick(editor.find<DeviceTextEdit>("txtMsg"), Qt::Key_Backspace);
    editor.project.STDMSG[2].clear();
    editor.click("btnMsgApply");
    QCOMPARE(editor.project.STDMSG[2], script.toStdString());
}

void MessageListPageTest::tabLeavesTheScript() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.showMessage("R3");
    auto* const box = editor.find<DeviceTextEdit>("txtMsg");
    box->setFocus();
    QTest::keyClick(box, Qt::Key_Tab);
    QVERIFY(editor.find<QPushButton>("btnEditMessage")->hasFocus());
    QCOMPARE(script(editor), std::string("CLEAR"));
}

void MessageListPageTest::theUnusedListsAreHidden() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.showPage("C4");
    QVERIFY(!editor.find<QListWidget>("List1")->isVisible());
    QVERIFY(!editor.find<QListWidget>("bmpList")->isVisible());
    QCOMPARE(editor.find<QListWidget>("bmpList")->property("pattern").toString(), QStringLiteral("*.bmp"));
}

QTEST_MAIN(MessageListPageTest)
#include "MessageListPageTest.moc"
