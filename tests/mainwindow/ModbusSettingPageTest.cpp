#include "tests/support/EditorFixture.h"

#include <QComboBox>
#include <QGroupBox>
#include <QPushButton>

using namespace orvista;
using namespace orvista::testing;

namespace {

QStringList entries(const QComboBox& list) {
    QStringList texts;
    for (int i = 0; i < list.count(); ++i)
        texts << list.itemText(i);
    return texts;
}

QStringList series(std::int64_t first, int step, int count) {
    QStringList texts;
    for (int i = 0; i < count; ++i)
        texts << QString::number(first + std::int64_t{step} * i);
    return texts;
}

QStringList texts(const EditorFixture& editor, std::initializer_list<const char*> boxes) {
    QStringList shown;
    for (const char* box : boxes)
        shown << editor.text(box);
    return shown;
}

QStringList current(const EditorFixture& editor) {
    return texts(editor, {"txtAltAddr", "txtStdAddr", "txtAIAddr", "txtDIAddr"});
}

QStringList typed(const EditorFixture& editor) {
    return texts(editor, {"txtNewAltAddr", "txtNewStdAddr", "txtNewAIAddr", "txtNewDIAddr"});
}

const QStringList nothing{"", "", "", ""};
const QStringList defaults{"300", "320", "100", "100"};

} // namespace

class ModbusSettingPageTest : public QObject {
    Q_OBJECT
private slots:
    void startsWithTheDefaults();
    void typingAnEmergencyAddressFillsTheRegularOne();
    void theRegularAddressCanBeOverwritten();
    void applyIsEnabledByDigitsAndStaysSo();
    void applyStoresShowsAndClears();
    void anEmptyRegularBoxStoresZero();
    void currentBoxesTakeTheTextAsTyped();
    void anOverflowStoresNothing();
    void typingAnAddressThatOverflowsShowsNoBox();
    void addressesNearTheEndAreShownAsTheyAre();
    void applyTwice();
    void restoreDefaultMarksTheProjectAndLeavesApply();
    void restoreDefaultFillsTheTestPage();
    void refreshLeavesApplyAlone();
    void reopeningPutsTheRegularBlockBehindTheEmergencyBlock();
    void framesAndBoxesAreAsGiven();

private:
    static void enterAll(EditorFixture& editor, const QString& address) {
        editor.showPage("C2");
        for (const char* box : {"txtNewAltAddr", "txtNewAIAddr", "txtNewDIAddr"})
            editor.type(box, address);
    }
    static bool canApply(const EditorFixture& editor) {
        return editor.find<QPushButton>("btnModBusApply")->isEnabled();
    }
};

void ModbusSettingPageTest::startsWithTheDefaults() {
    EditorFixture editor;
    editor.startWithNewProject();
    QCOMPARE(current(editor), defaults);
    QCOMPARE(typed(editor), nothing);
    QVERIFY(!canApply(editor));
}

void ModbusSettingPageTest::typingAnEmergencyAddressFillsTheRegularOne() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.showPage("C2");
    editor.type("txtNewAltAddr", QStringLiteral("300"));
    QCOMPARE(editor.text("txtNewStdAddr"), QStringLiteral("320"));
    editor.type("txtNewAltAddr", QStringLiteral("abc"));
    QCOMPARE(editor.text("txtNewStdAddr"), QStringLiteral("320"));
    editor.type("txtNewAltAddr", QStringLiteral("007"));
    QCOMPARE(editor.text("txtNewStdAddr"), QStringLiteral("27"));
    editor.type("txtNewAltAddr", QStringLiteral("-5"));
    QCOMPARE(editor.text("txtNewStdAddr"), QStringLiteral("27"));
}

void ModbusSettingPageTest::theRegularAddressCanBeOverwritten() {
    EditorFixture editor;
    editor.startWithNewProject();
    enterAll(editor, QStringLiteral("300"));
    editor.type("txtNewStdAddr", QStringLiteral("400"));
    editor.click("btnModBusApply");
    QCOMPARE(editor.project.RegularMessage, 400);
    QCOMPARE(editor.project.AlertMessage, 300);
}

void ModbusSettingPageTest::applyIsEnabledByDigitsAndStaysSo() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.showPage("C2");
    editor.type("txtNewAltAddr", QStringLiteral("12"));
    editor.type("txtNewAIAddr", QStringLiteral("12"));
    QVERIFY(!canApply(editor));
    editor.type("txtNewDIAddr", QStringLiteral("+1"));
    QVERIFY(!canApply(editor));
    editor.type("txtNewDIAddr", QStringLiteral("12"));
    QVERIFY(canApply(editor));
    editor.type("txtNewDIAddr", QStringLiteral("1x"));
    QVERIFY(canApply(editor));
    editor.click("btnModBusApply");
    QCOMPARE(editor.project.DigitalInput, 1);
}

void ModbusSettingPageTest::applyStoresShowsAndClears() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.trigger("SAVE");
    editor.showPage("C2");
    editor.type("txtNewAltAddr", QStringLiteral("500"));
    editor.type("txtNewAIAddr", QStringLiteral("200"));
    editor.type("txtNewDIAddr", QStringLiteral("700"));
    editor.click("btnModBusApply");
    QCOMPARE(editor.project.AlertMessage, 500);
    QCOMPARE(editor.project.RegularMessage, 520);
    QCOMPARE(editor.project.AnalogInput, 200);
    QCOMPARE(editor.project.DigitalInput, 700);
    QCOMPARE(current(editor), (QStringList{"500", "520", "200", "700"}));
    QCOMPARE(typed(editor), nothing);
    QVERIFY(!canApply(editor));
    QVERIFY(editor.project.modified);
    QCOMPARE(editor.text("txtEMsgAddr"), QStringLiteral("500"));
    QCOMPARE(editor.text("txtRMsgAddr"), QStringLiteral("520"));
    QCOMPARE(entries(*editor.find<QComboBox>("cbAIAddr")), series(200, 2, 64));
    QCOMPARE(entries(*editor.find<QComboBox>("cbDIAddr")), series(700, 1, 32));
    QCOMPARE(editor.find<QComboBox>("cbAIAddr")->currentText(), QStringLiteral("200"));
    QCOMPARE(editor.find<QComboBox>("cbDIAddr")->currentText(), QStringLiteral("700"));
}

void ModbusSettingPageTest::anEmptyRegularBoxStoresZero() {
    EditorFixture editor;
    editor.startWithNewProject();
    enterAll(editor, QStringLiteral("300"));
    editor.type("txtNewStdAddr", QString());
    editor.click("btnModBusApply");
    QCOMPARE(editor.project.RegularMessage, 0);
    QCOMPARE(editor.text("txtStdAddr"), QString());
    QCOMPARE(editor.text("txtRMsgAddr"), QString());
}

void ModbusSettingPageTest::currentBoxesTakeTheTextAsTyped() {
    EditorFixture editor;
    editor.startWithNewProject();
    enterAll(editor, QStringLiteral("0040"));
    editor.type("txtNewStdAddr", QStringLiteral(" 2.5 rest"));
    editor.type("txtNewAIAddr", QStringLiteral("1e2x"));
    editor.click("btnModBusApply");
    QCOMPARE(current(editor), (QStringList{"0040", " 2.5 rest", "1e2x", "0040"}));
    QCOMPARE(editor.project.AlertMessage, 40);
    QCOMPARE(editor.project.RegularMessage, 2); // halves to even
    QCOMPARE(editor.project.AnalogInput, 100);
    QCOMPARE(editor.text("txtEMsgAddr"), QStringLiteral("0040"));
}

void ModbusSettingPageTest::anOverflowStoresNothing() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.trigger("SAVE");
    enterAll(editor, QStringLiteral("500"));
    editor.type("txtNewDIAddr", QStringLiteral("2147483648"));
    editor.click("btnModBusApply");
    QCOMPARE(editor.messages.shown.size(), std::size_t{1});
    QCOMPARE(editor.messages.shown[0].text, std::string("Overflow"));
    QCOMPARE(editor.project.AlertMessage, 300);
    QCOMPARE(editor.project.RegularMessage, 320);
    QCOMPARE(editor.project.AnalogInput, 100);
    QVERIFY(!editor.project.modified);
    QVERIFY(canApply(editor));
    QCOMPARE(typed(editor), (QStringList{"500", "520", "500", "2147483648"}));
}

void ModbusSettingPageTest::typingAnAddressThatOverflowsShowsNoBox() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.showPage("C2");
    editor.type("txtNewAltAddr", QStringLiteral("2147483648"));
    QCOMPARE(editor.text("txtNewStdAddr"), QStringLiteral("214748384")); // from the digits before the last
    editor.find<QLineEdit>("txtNewAltAddr")->setText(QString(400, u'9'));
    QCOMPARE(editor.text("txtNewStdAddr"), QStringLiteral("214748384"));
    QVERIFY(editor.messages.shown.empty());
}

void ModbusSettingPageTest::addressesNearTheEndAreShownAsTheyAre() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.showPage("C2");
    editor.type("txtNewAltAddr", QStringLiteral("2147483647"));
    QCOMPARE(editor.text("txtNewStdAddr"), QStringLiteral("2147483667"));
    editor.type("txtNewStdAddr", QStringLiteral("1"));
    editor.type("txtNewAIAddr", QStringLiteral("2147483647"));
    editor.type("txtNewDIAddr", QStringLiteral("2147483647"));
    editor.click("btnModBusApply");
    QCOMPARE(entries(*editor.find<QComboBox>("cbAIAddr")), series(2147483647, 2, 64));
    editor.showVariable("F64");
    QCOMPARE(editor.text("txtVarAddr"), QStringLiteral("2147483773"));
}

void ModbusSettingPageTest::applyTwice() {
    EditorFixture editor;
    editor.startWithNewProject();
    for (const char* address : {"500", "600"}) {
        enterAll(editor, QString::fromLatin1(address));
        editor.click("btnModBusApply");
        QVERIFY(!canApply(editor));
    }
    QCOMPARE(editor.project.AlertMessage, 600);
    QCOMPARE(editor.project.RegularMessage, 620);
}

void ModbusSettingPageTest::restoreDefaultMarksTheProjectAndLeavesApply() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.trigger("SAVE");
    editor.showPage("C2");
    editor.click("btnRestoreDefault");
    QVERIFY(editor.project.modified);
    QVERIFY(!canApply(editor));
    enterAll(editor, QStringLiteral("500"));
    editor.click("btnRestoreDefault");
    QVERIFY(canApply(editor));
    QCOMPARE(typed(editor), nothing);
    QCOMPARE(current(editor), defaults);
}

void ModbusSettingPageTest::restoreDefaultFillsTheTestPage() {
    EditorFixture editor;
    editor.startWithNewProject();
    enterAll(editor, QStringLiteral("500"));
    editor.click("btnModBusApply");
    editor.click("btnRestoreDefault");
    QCOMPARE(editor.project.AlertMessage, 300);
    QCOMPARE(editor.project.RegularMessage, 320);
    QCOMPARE(editor.project.AnalogInput, 100);
    QCOMPARE(editor.project.DigitalInput, 100);
    QCOMPARE(texts(editor, {"txtEMsgAddr", "txtRMsgAddr"}), (QStringList{"300", "320"}));
    QCOMPARE(entries(*editor.find<QComboBox>("cbAIAddr")), series(100, 2, 64));
    QCOMPARE(entries(*editor.find<QComboBox>("cbDIAddr")), series(100, 1, 32));
}

void ModbusSettingPageTest::refreshLeavesApplyAlone() {
    EditorFixture editor;
    editor.startWithNewProject();
    enterAll(editor, QStringLiteral("500"));
    editor.window->RefreshViews();
    QVERIFY(canApply(editor));
    QCOMPARE(typed(editor), nothing);
}

void ModbusSettingPageTest::reopeningPutsTheRegularBlockBehindTheEmergencyBlock() {
    EditorFixture editor;
    editor.startWithNewProject();
    enterAll(editor, QStringLiteral("300"));
    editor.type("txtNewStdAddr", QStringLiteral("400"));
    editor.click("btnModBusApply");
    editor.trigger("SAVE");
    editor.openProject("Line3");
    QCOMPARE(editor.text("txtStdAddr"), QStringLiteral("320"));
    QCOMPARE(editor.project.RegularMessage, 320);
}

void ModbusSettingPageTest::framesAndBoxesAreAsGiven() {
    EditorFixture editor;
    editor.startWithNewProject();
    const std::pair<const char*, const char*> frames[] = {
        {"txtStdAddr", "Regular Message Start Address ( 40 Continuous 0xxxx Coil Address)"},
        {"txtAltAddr", "Emergency Message Start Address (20 Continuous 0xxxx Coil Address)"},
        {"txtAIAddr", "Float Variable Start Address (64 Continuous 4xxxx Register Address)"},
        {"txtDIAddr", "Boolean Variable Start Address (32 Continuous 0xxxx Boolean Address)"}};
    for (const auto& [box, caption] : frames) {
        auto* const current = editor.find<QLineEdit>(box);
        QCOMPARE(qobject_cast<QGroupBox*>(current->parentWidget())->title(), QString::fromLatin1(caption));
        QVERIFY(current->isReadOnly());
    }
}

QTEST_MAIN(ModbusSettingPageTest)
#include "ModbusSettingPageTest.moc"
