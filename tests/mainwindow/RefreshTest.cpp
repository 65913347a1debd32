#include "mainwindow/ItemTree.h"
#include "tests/support/EditorFixture.h"
#include "tests/support/ModalDriver.h"
#include "widgets/DeviceTextEdit.h"

#include <QComboBox>
#include <QPushButton>

#include <tuple>

using namespace orvista;
using namespace orvista::testing;

/// What the pages show after the model was replaced as a whole.
class RefreshTest : public QObject {
    Q_OBJECT
private slots:
    void anOpenedProjectShowsInTheSameMessage();
    void anOpenedProjectShowsInTheSameVariable();
    void everyKindOfItemFollows_data();
    void everyKindOfItemFollows();
    void aResetShowsTheDefaults();
    void aNewProjectShowsTheDefaultsInTheShownItems();
    void aRefreshWithNothingShownLeavesThePagesEmpty();
    void treesKeepTheirSelection();
    void aDownloadedAddressMapReachesTheTestPage();
    void thePagesShowEverySetting();

private:
    /// A saved project that differs from the defaults in two messages and in the second variables.
    static void makeSavedProject(EditorFixture& editor, const std::string& name) {
        editor.startWithNewProject(name);
        editor.project.STDMSG[2] = "third";
        editor.project.ALTMSG[3] = "fourth";
        editor.project.RegVar[1] = {"RegVar2", "1.5", "6", "2"};
        editor.project.CoilVar[1] = {"CoilVar2", "1", "RUN", "STOP"};
        editor.project.IP = "127.0.0.9";
        editor.project.AnalogInput = 200;
        editor.project.DigitalInput = 700;
        editor.project.AlertMessage = 500;
        editor.trigger("SAVE");
    }
    static std::string script(const EditorFixture& editor) {
        return editor.find<DeviceTextEdit>("txtMsg")->bytes();
    }
    static void showItem(const EditorFixture& editor, const QByteArray& key) {
        if (key[0] == 'R' || key[0] == 'E')
            editor.showMessage(key.constData());
        else
            editor.showVariable(key.constData());
    }
    /// Script; default value, width, precision, ON and OFF text.
    static QStringList settings(const EditorFixture& editor) {
        QStringList shown{QString::fromStdString(script(editor))};
        for (const char* box : {"txtVarDefValue", "txtVarWidth", "txtVarPrec", "txtVarOnStr", "txtVarOffStr"})
            shown << editor.text(box);
        return shown;
    }
};

void RefreshTest::anOpenedProjectShowsInTheSameMessage() {
    EditorFixture editor;
    makeSavedProject(editor, "Line3");
    editor.newProject("Other");
    editor.showMessage("R3");
    QTest::keyClicks(editor.find<DeviceTextEdit>("txtMsg"), QStringLiteral("typed"));
    editor.messages.answers = {Answer::No};
    editor.openProject("Line3");
    QCOMPARE(editor.text("txtMsgName"), QStringLiteral("STDMSG3"));
    QCOMPARE(script(editor), std::string("third\r\n"));
    QVERIFY(!editor.find<QPushButton>("btnMsgApply")->isEnabled());
    QVERIFY(editor.find<DeviceTextEdit>("txtMsg")->isEnabled());
}

void RefreshTest::anOpenedProjectShowsInTheSameVariable() {
    EditorFixture editor;
    makeSavedProject(editor, "Line3");
    editor.newProject("Other");
    editor.showVariable("B2");
    onModal(QStringLiteral("frmBoolVarEdit"), [](QWidget* dialog) {
        QTest::mouseClick(dialog->findChild<QPushButton*>("btnOK"), Qt::LeftButton);
    });
    editor.click("btnEditVariable");
    QVERIFY(editor.find<QPushButton>("btnVarApply")->isEnabled());
    editor.messages.answers = {Answer::No};
    editor.openProject("Line3");
    QCOMPARE(editor.text("txtVarOnStr"), QStringLiteral("RUN"));
    QCOMPARE(editor.text("txtVarOffStr"), QStringLiteral("STOP"));
    QCOMPARE(editor.text("txtVarDefValue"), QStringLiteral("1"));
    QCOMPARE(editor.text("txtVarAddr"), QStringLiteral("101"));
    QVERIFY(!editor.find<QPushButton>("btnVarApply")->isEnabled());
    QVERIFY(editor.find<QPushButton>("btnEditVariable")->isEnabled());
}

void RefreshTest::everyKindOfItemFollows_data() {
    QTest::addColumn<QByteArray>("way");
    QTest::addColumn<QByteArray>("item");
    QTest::addColumn<QStringList>("expected");
    const std::tuple<const char*, QStringList, QStringList> items[] = {
        {"R3", {"CLEAR", "", "", "", "", ""}, {"third\r\n", "", "", "", "", ""}},
        {"E4", {"CLEAR", "", "", "", "", ""}, {"fourth\r\n", "", "", "", "", ""}},
        {"F2", {"", "0.0", "7", "3", "", ""}, {"", "1.5", "6", "2", "", ""}},
        {"B2", {"", "0", "", "", "ON", "OFF"}, {"", "1", "", "", "RUN", "STOP"}}};
    for (const auto& [item, defaults, saved] : items) {
        QTest::addRow("new, %s", item) << QByteArray("new") << QByteArray(item) << defaults;
        QTest::addRow("reset, %s", item) << QByteArray("reset") << QByteArray(item) << defaults;
        QTest::addRow("opened, %s", item) << QByteArray("opened") << QByteArray(item) << saved;
    }
}

void RefreshTest::everyKindOfItemFollows() {
    QFETCH(const QByteArray, way);
    QFETCH(const QByteArray, item);
    QFETCH(const QStringList, expected);
    EditorFixture editor;
    makeSavedProject(editor, "Line3");
    if (way == "opened")
        editor.newProject("Other");
    showItem(editor, item);
    QVERIFY(settings(editor) != expected);
    editor.messages.answers = {Answer::No};
    if (way == "new")
        editor.newProject("Line4");
    else if (way == "opened")
        editor.openProject("Line3");
    else
        editor.trigger("miFileOpen"); // cancelled
    QCOMPARE(settings(editor), expected);
    for (const char* apply : {"btnMsgApply", "btnVarApply"})
        QVERIFY2(!editor.find<QPushButton>(apply)->isEnabled(), apply);
}

void RefreshTest::aResetShowsTheDefaults() {
    EditorFixture editor;
    makeSavedProject(editor, "Line3");
    editor.showVariable("F2");
    editor.showMessage("R3");
    QCOMPARE(script(editor), std::string("third"));
    editor.trigger("miFileOpen"); // cancelled
    QCOMPARE(script(editor), std::string("CLEAR"));
    QCOMPARE(editor.text("txtMsgName"), QStringLiteral("STDMSG3"));
    QCOMPARE(editor.text("txtVarDefValue"), QStringLiteral("0.0"));
    QCOMPARE(editor.text("txtVarWidth"), QStringLiteral("7"));
    QCOMPARE(editor.text("txtAIAddr"), QStringLiteral("100"));
    QCOMPARE(editor.text("txtSystemIP"), QString::fromStdString(Project().IP));
    // The reset refreshes before it takes the name away.
    QCOMPARE(editor.text("txtSystemName"), QStringLiteral("Line3"));
}

void RefreshTest::aNewProjectShowsTheDefaultsInTheShownItems() {
    EditorFixture editor;
    makeSavedProject(editor, "Line3");
    editor.showVariable("B2");
    editor.showMessage("R3");
    editor.newProject("Line4");
    QCOMPARE(script(editor), std::string("CLEAR"));
    QCOMPARE(editor.text("txtVarOnStr"), QStringLiteral("ON"));
    QCOMPARE(editor.text("txtSystemName"), QStringLiteral("Line4"));
}

void RefreshTest::aRefreshWithNothingShownLeavesThePagesEmpty() {
    EditorFixture editor;
    makeSavedProject(editor, "Line3");
    editor.window->RefreshViews();
    QCOMPARE(script(editor), std::string());
    for (const char* box : {"txtVarName", "txtVarAddr", "txtVarType", "txtVarDefValue", "txtVarWidth",
                            "txtVarPrec", "txtVarOnStr", "txtVarOffStr", "txtMsgName", "txtMsgSno"})
        QCOMPARE(editor.text(box), QString());
}

void RefreshTest::treesKeepTheirSelection() {
    EditorFixture editor;
    makeSavedProject(editor, "Line3");
    editor.showVariable("F2");
    editor.showMessage("E4");
    editor.openProject("Line3");
    QCOMPARE(nodeKey(*editor.find<ItemTree>("trvVar")->currentItem()), QStringLiteral("F2"));
    QCOMPARE(nodeKey(*editor.find<ItemTree>("trvMsg")->currentItem()), QStringLiteral("E4"));
}

void RefreshTest::aDownloadedAddressMapReachesTheTestPage() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.showVariable("F5");
    auto& lifecycle = editor.window->lifecycle();
    lifecycle.InitProject();
    editor.project.AnalogInput = 200;
    lifecycle.adoptDownloadedProject(editor.projectNamed("Fetched"));
    QCOMPARE(editor.find<QComboBox>("cbAIAddr")->itemText(0), QStringLiteral("200"));
    QCOMPARE(editor.text("txtVarAddr"), QStringLiteral("108"));
    editor.showVariable("F5");
    QCOMPARE(editor.text("txtVarAddr"), QStringLiteral("208"));
}

void RefreshTest::thePagesShowEverySetting() {
    EditorFixture editor;
    makeSavedProject(editor, "Line3");
    editor.newProject("Other");
    editor.messages.answers = {Answer::No};
    editor.openProject("Line3");
    const std::pair<const char*, const char*> shown[] = {
        {"txtSystemName", "Line3"}, {"txtSystemIP", "127.0.0.9"}, {"txtIP", "127.0.0.9"},
        {"txtAltAddr", "500"},      {"txtStdAddr", "520"},        {"txtAIAddr", "200"},
        {"txtDIAddr", "700"},       {"txtEMsgAddr", "500"},       {"txtRMsgAddr", "520"}};
    for (const auto& [box, text] : shown)
        QCOMPARE(editor.text(box), QString::fromLatin1(text));
    const auto* const coils = editor.find<QComboBox>("cbDIAddr");
    QCOMPARE(coils->count(), 32);
    QCOMPARE(coils->currentText(), QStringLiteral("700"));
    QCOMPARE(coils->itemText(31), QStringLiteral("731"));
    QCOMPARE(editor.find<QComboBox>("cbAIAddr")->itemText(63), QStringLiteral("326"));
}

QTEST_MAIN(RefreshTest)
#include "RefreshTest.moc"
