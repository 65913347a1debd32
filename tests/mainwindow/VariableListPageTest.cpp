#include "mainwindow/ItemTree.h"
#include "tests/support/BoxInput.h"
#include "tests/support/EditorFixture.h"
#include "tests/support/ModalDriver.h"
#include "widgets/DeviceLineEdit.h"

#include <QComboBox>
#include <QDialog>
#include <QPushButton>

using namespace orvista;
using namespace orvista::testing;

namespace {

/// Name, address, type, default, width, precision, ON and OFF text.
QStringList fields(const EditorFixture& editor) {
    QStringList texts;
    for (const char* box : {"txtVarName", "txtVarAddr", "txtVarType", "txtVarDefValue", "txtVarWidth",
                            "txtVarPrec", "txtVarOnStr", "txtVarOffStr"})
        texts << editor.text(box);
    return texts;
}

const QStringList nothing{"", "", "", "", "", "", "", ""};

void setBox(QWidget* dialog, const char* box, const QString& text) {
    auto* const edit = dialog->findChild<QLineEdit*>(QString::fromLatin1(box));
    edit->selectAll();
    QTest::keyClicks(edit, text);
}

void choose(QWidget* dialog, const char* list, const QString& text) {
    dialog->findChild<QComboBox*>(QString::fromLatin1(list))->setCurrentText(text);
}

void press(QWidget* dialog, const char* button) {
    QTest::mouseClick(dialog->findChild<QPushButton*>(QString::fromLatin1(button)), Qt::LeftButton);
}

void accept(QWidget* dialog) {
    press(dialog, "btnOK");
}
void cancel(QWidget* dialog) {
    press(dialog, "btnCancel");
}

} // namespace

class VariableListPageTest : public QObject {
    Q_OBJECT
private slots:
    void startsEmpty();
    void showsAFloatVariable();
    void showsABooleanVariable();
    void theLastVariables();
    void aGroupEmptiesEverything();
    void addressesFollowTheMapAtTheNextClick();
    void editsAFloatVariable();
    void editsABooleanVariable();
    void cancellingLeavesEverything();
    void closingByEscCancelsTheBooleanEditor();
    void applyStoresOnlyTheShownVariable();
    void anotherClickDiscardsTheEdit();
    void clickingTheCurrentNodeDiscardsTheEdit();
    void applyTwice();
    void fieldsTakeNoInput();
    void everyByteSurvivesShowingAndApplying();
    void labelsAreAsGiven();

private:
    static bool canEdit(const EditorFixture& editor) {
        return editor.find<QPushButton>("btnEditVariable")->isEnabled();
    }
    static bool canApply(const EditorFixture& editor) {
        return editor.find<QPushButton>("btnVarApply")->isEnabled();
    }
    static void editFloat(EditorFixture& editor, const QString& defaultValue) {
        onModal(QStringLiteral("frmFloatVarEdit"), [defaultValue](QWidget* dialog) {
            setBox(dialog, "txtVarDefValue", defaultValue);
            accept(dialog);
        });
        editor.click("btnEditVariable");
        QVERIFY(allModalsServed());
    }
};

void VariableListPageTest::startsEmpty() {
    EditorFixture editor;
    editor.startWithNewProject();
    QCOMPARE(fields(editor), nothing);
    QVERIFY(!canEdit(editor));
    QVERIFY(!canApply(editor));
}

void VariableListPageTest::showsAFloatVariable() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.project.RegVar[4] = {"RegVar5", "1.5", "6", "2"};
    editor.showVariable("F5");
    QCOMPARE(fields(editor), (QStringList{"RegVar5", "108", "FLOAT", "1.5", "6", "2", "", ""}));
    QVERIFY(canEdit(editor));
    QVERIFY(!canApply(editor));
}

void VariableListPageTest::showsABooleanVariable() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.project.CoilVar[1] = {"CoilVar2", "1", "RUN", "STOP"};
    editor.showVariable("F5");
    editor.showVariable("B2");
    QCOMPARE(fields(editor), (QStringList{"CoilVar2", "101", "BOOLEAN", "1", "", "", "RUN", "STOP"}));
    QVERIFY(canEdit(editor));
}

void VariableListPageTest::theLastVariables() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.showVariable("F64");
    QCOMPARE(editor.text("txtVarName"), QStringLiteral("RegVar64"));
    QCOMPARE(editor.text("txtVarAddr"), QStringLiteral("226"));
    editor.showVariable("B32");
    QCOMPARE(editor.text("txtVarName"), QStringLiteral("CoilVar32"));
    QCOMPARE(editor.text("txtVarAddr"), QStringLiteral("131"));
}

void VariableListPageTest::aGroupEmptiesEverything() {
    EditorFixture editor;
    editor.startWithNewProject();
    for (const char* group : {"REGISTER", "COIL"}) {
        editor.showVariable("F5");
        editFloat(editor, QStringLiteral("2"));
        QVERIFY(canApply(editor));
        editor.clickNode("trvVar", group);
        QCOMPARE(fields(editor), nothing);
        QVERIFY(!canEdit(editor));
        QVERIFY(!canApply(editor));
    }
}

void VariableListPageTest::addressesFollowTheMapAtTheNextClick() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.showVariable("F5");
    editor.project.AnalogInput = 200;
    editor.window->RefreshViews();
    QCOMPARE(editor.text("txtVarAddr"), QStringLiteral("108"));
    editor.clickNode("trvVar", "F5");
    QCOMPARE(editor.text("txtVarAddr"), QStringLiteral("208"));
}

void VariableListPageTest::editsAFloatVariable() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.trigger("SAVE");
    editor.showVariable("F5");
    onModal(QStringLiteral("frmFloatVarEdit"), [](QWidget* dialog) {
        QCOMPARE(dialog->findChild<QLineEdit*>("txtVarName")->text(), QStringLiteral("RegVar5"));
        setBox(dialog, "txtVarDefValue", QStringLiteral("1e3"));
        choose(dialog, "cbWidth", QStringLiteral("2"));
        accept(dialog);
    });
    editor.click("btnEditVariable");
    QVERIFY(allModalsServed());
    QCOMPARE(fields(editor), (QStringList{"RegVar5", "108", "FLOAT", "1000", "2", "0", "", ""}));
    QVERIFY(canApply(editor));
    QVERIFY(!editor.project.modified);
    QCOMPARE(editor.project.RegVar[4], (FloatVariable{"RegVar5", "0.0", "7", "3"}));
    editor.click("btnVarApply");
    QCOMPARE(editor.project.RegVar[4], (FloatVariable{"RegVar5", "1000", "2", "0"}));
    QVERIFY(editor.project.modified);
    QVERIFY(!canApply(editor));
}

void VariableListPageTest::editsABooleanVariable() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.showVariable("B32");
    onModal(QStringLiteral("frmBoolVarEdit"), [](QWidget* dialog) {
        QCOMPARE(dialog->findChild<QLineEdit*>("txtVarAddr")->text(), QStringLiteral("131"));
        choose(dialog, "cbDefVal", QStringLiteral("1"));
        setBox(dialog, "txtVarON", QStringLiteral("RUN"));
        setBox(dialog, "txtVarOFF", QStringLiteral("STOP"));
        accept(dialog);
    });
    editor.click("btnEditVariable");
    QVERIFY(allModalsServed());
    QCOMPARE(fields(editor), (QStringList{"CoilVar32", "131", "BOOLEAN", "1", "", "", "RUN", "STOP"}));
    editor.click("btnVarApply");
    QCOMPARE(editor.project.CoilVar[31], (BooleanVariable{"CoilVar32", "1", "RUN", "STOP"}));
    QCOMPARE(editor.project.CoilVar[30], (BooleanVariable{"CoilVar31", "0", "ON", "OFF"}));
}

void VariableListPageTest::cancellingLeavesEverything() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.showVariable("F5");
    const auto cancelEdit = [&editor] {
        onModal(QStringLiteral("frmFloatVarEdit"), [](QWidget* dialog) {
            setBox(dialog, "txtVarDefValue", QStringLiteral("9"));
            cancel(dialog);
        });
        editor.click("btnEditVariable");
        QVERIFY(allModalsServed());
    };
    cancelEdit();
    QCOMPARE(editor.text("txtVarDefValue"), QStringLiteral("0.0"));
    QVERIFY(!canApply(editor));
    editFloat(editor, QStringLiteral("2"));
    cancelEdit();
    QCOMPARE(editor.text("txtVarDefValue"), QStringLiteral("2"));
    QVERIFY(canApply(editor));
}

void VariableListPageTest::closingByEscCancelsTheBooleanEditor() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.showVariable("B1");
    onModal(QStringLiteral("frmBoolVarEdit"), [](QWidget* dialog) {
        setBox(dialog, "txtVarON", QStringLiteral("RUN"));
        QTest::keyClick(dialog, Qt::Key_Escape);
    });
    editor.click("btnEditVariable");
    QVERIFY(allModalsServed());
    QCOMPARE(editor.text("txtVarOnStr"), QStringLiteral("ON"));
    QVERIFY(!canApply(editor));
}

void VariableListPageTest::applyStoresOnlyTheShownVariable() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.showVariable("F64");
    editFloat(editor, QStringLiteral("2.25"));
    editor.click("btnVarApply");
    Project expected;
    expected.RegVar[63].defaultValue = "2.25";
    QCOMPARE(editor.project.RegVar, expected.RegVar);
    QCOMPARE(editor.project.CoilVar, expected.CoilVar);
}

void VariableListPageTest::anotherClickDiscardsTheEdit() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.showVariable("F5");
    editFloat(editor, QStringLiteral("2"));
    QTest::keyClick(editor.find<ItemTree>("trvVar"), Qt::Key_Down);
    QCOMPARE(editor.text("txtVarName"), QStringLiteral("RegVar6"));
    QVERIFY(!canApply(editor));
    editor.clickNode("trvVar", "F5");
    QCOMPARE(editor.text("txtVarDefValue"), QStringLiteral("0.0"));
    QCOMPARE(editor.project.RegVar[4].defaultValue, std::string("0.0"));
}

void VariableListPageTest::clickingTheCurrentNodeDiscardsTheEdit() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.showVariable("F5");
    editFloat(editor, QStringLiteral("2"));
    editor.clickNode("trvVar", "F5");
    QCOMPARE(editor.text("txtVarDefValue"), QStringLiteral("0.0"));
    QVERIFY(!canApply(editor));
}

void VariableListPageTest::applyTwice() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.showVariable("F5");
    for (const char* value : {"2", "3"}) {
        editFloat(editor, QString::fromLatin1(value));
        editor.click("btnVarApply");
        QCOMPARE(editor.project.RegVar[4].defaultValue, std::string(value));
        QVERIFY(!canApply(editor));
    }
}

void VariableListPageTest::fieldsTakeNoInput() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.showVariable("F5");
    for (const char* box : {"txtVarName", "txtVarAddr", "txtVarType", "txtVarDefValue", "txtVarWidth",
                            "txtVarPrec", "txtVarOnStr", "txtVarOffStr"}) {
        const QString before = editor.text(box);
        QTest::keyClicks(editor.find<QLineEdit>(box), QStringLiteral("x"));
        QCOMPARE(editor.text(box), before);
    }
}

void VariableListPageTest::everyByteSurvivesShowingAndApplying() {
    EditorFixture editor;
    editor.startWithNewProject();
    const BooleanVariable boolean{"CoilVar3", everyByte(), everyByte() + "1", everyByte() + "2"};
    editor.project.CoilVar[2] = boolean;
    editor.showVariable("B3");
    // The editor hands the texts on without changing them; the default is one of its list.
    onModal(QStringLiteral("frmBoolVarEdit"), accept);
    editor.click("btnEditVariable");
    editor.click("btnVarApply");
    QCOMPARE(editor.project.CoilVar[2], (BooleanVariable{"CoilVar3", "0", boolean.onText, boolean.offText}));

    const FloatVariable floating{"RegVar3", everyByte(), everyByte() + "1", everyByte() + "2"};
    editor.project.RegVar[2] = floating;
    editor.showVariable("F3");
    QCOMPARE(editor.find<DeviceLineEdit>("txtVarDefValue")->bytes(), floating.defaultValue);
    QCOMPARE(editor.find<DeviceLineEdit>("txtVarWidth")->bytes(), floating.width);
    QCOMPARE(editor.find<DeviceLineEdit>("txtVarPrec")->bytes(), floating.precision);
}

void VariableListPageTest::labelsAreAsGiven() {
    EditorFixture editor;
    editor.startWithNewProject();
    const std::pair<const char*, const char*> labels[] = {
        {"txtVarName", "Variable Name:"},   {"txtVarAddr", "Variable address:"},
        {"txtVarType", "Variable Type:"},   {"txtVarDefValue", "Default value:"},
        {"txtVarWidth", "Width:"},          {"txtVarPrec", "Precision:"},
        {"txtVarOnStr", "\"ON\" message:"}, {"txtVarOffStr", "\"OFF\" message"}};
    for (const auto& [box, caption] : labels)
        QCOMPARE(editor.label(box), QString::fromLatin1(caption));
}

QTEST_MAIN(VariableListPageTest)
#include "VariableListPageTest.moc"
