#include "tests/support/EditorFixture.h"
#include "tests/support/ModalDriver.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>

using namespace orvista;
using namespace orvista::testing;

namespace {

const QString notApplied = QStringLiteral("not applied; Save leaves it out");

struct Marked : EditorFixture {
    Marked() { startWithNewProject(); }
    /// The text beside the Apply button of the shown page; empty when none is to be seen.
    QString mark() const {
        const auto* const label =
            find<QTabWidget>("tabDetails")->currentWidget()->findChild<QLabel*>("lblNotApplied");
        return label->isVisible() ? label->text() : QString();
    }
    QPlainTextEdit* script() const { return find<QPlainTextEdit>("txtMsg"); }
    bool applies(const char* button) const { return find<QPushButton>(button)->isEnabled(); }
    void editShownVariable(const QString& dialog, const QString& box, const QString& text) const {
        onModal(dialog, [box, text](QWidget* editor) {
            auto* const line = editor->findChild<QLineEdit*>(box);
            line->setText(text);
            QTest::mouseClick(editor->findChild<QPushButton*>(QStringLiteral("btnOK")), Qt::LeftButton);
        });
        click("btnEditVariable");
    }
};

} // namespace

/// Beside each Apply button stands whether the page shows what is in the project: found by comparing, never
/// from the button.
class NotAppliedTest : public QObject {
    Q_OBJECT
private slots:
    void aScriptIsComparedAtEachKey();
    void anEmptiedScriptIsNotAppliedThoughApplyIsDisabled();
    void applyAndAnotherMessageTakeTheMarkAway();
    void aRefreshTakesTheMarkAway();
    void aLongScriptIsComparedWhenTheKeysRest();
    void everyByteOfAMessageComparesEqual();
    void anEditedVariableIsNotAppliedUntilItIs();
    void anEditThatChangesNothingIsNoEdit();
    void anyNewAddressIsNotApplied();
};

void NotAppliedTest::aScriptIsComparedAtEachKey() {
    Marked editor;
    editor.showMessage("R1");
    QCOMPARE(editor.mark(), QString());
    QTest::keyClicks(editor.script(), QStringLiteral("x"));
    QCOMPARE(editor.mark(), notApplied);
    QTest::keyClick(editor.script(), Qt::Key_Backspace);
    QCOMPARE(editor.mark(), QString());
    QVERIFY(editor.applies("btnMsgApply"));
}

void NotAppliedTest::anEmptiedScriptIsNotAppliedThoughApplyIsDisabled() {
    Marked editor;
    editor.showMessage("E1");
    editor.script()->selectAll();
    QTest::keyClick(editor.script(), Qt::Key_Delete);
    QVERIFY(!editor.applies("btnMsgApply"));
    QCOMPARE(editor.mark(), notApplied);
}

void NotAppliedTest::applyAndAnotherMessageTakeTheMarkAway() {
    Marked editor;
    editor.showMessage("R1");
    QTest::keyClicks(editor.script(), QStringLiteral("x"));
    editor.click("btnMsgApply");
    QCOMPARE(editor.mark(), QString());
    QTest::keyClicks(editor.script(), QStringLiteral("y"));
    QCOMPARE(editor.mark(), notApplied);
    editor.showMessage("R2");
    QCOMPARE(editor.mark(), QString());
    QTest::keyClicks(editor.script(), QStringLiteral("z"));
    editor.showMessage("REGULAR");
    QCOMPARE(editor.mark(), QString());
}

void NotAppliedTest::aRefreshTakesTheMarkAway() {
    Marked editor;
    editor.showMessage("R1");
    QTest::keyClicks(editor.script(), QStringLiteral("x"));
    editor.window->RefreshViews();
    QCOMPARE(editor.mark(), QString());
}

void NotAppliedTest::aLongScriptIsComparedWhenTheKeysRest() {
    Marked editor;
    for (int line = 0; line < 8'000; ++line)
        editor.project.STDMSG[0] += "STILL 500\r\n";
    editor.showMessage("R1");
    QCOMPARE(editor.mark(), QString());
    QTest::keyClicks(editor.script(), QStringLiteral("x"));
    QTRY_COMPARE(editor.mark(), notApplied);
    QTest::keyClick(editor.script(), Qt::Key_Backspace);
    QTRY_COMPARE(editor.mark(), QString());
}

void NotAppliedTest::everyByteOfAMessageComparesEqual() {
    Marked editor;
    for (int byte = 0; byte < 256; ++byte)
        editor.project.STDMSG[0].push_back(static_cast<char>(byte));
    editor.project.STDMSG[0] += std::string(30'000, 'x');
    editor.showMessage("R1");
    QCOMPARE(editor.mark(), QString());
}

void NotAppliedTest::anEditedVariableIsNotAppliedUntilItIs() {
    Marked editor;
    editor.showVariable("F5");
    QCOMPARE(editor.mark(), QString());
    editor.editShownVariable(QStringLiteral("frmFloatVarEdit"), QStringLiteral("txtVarDefValue"),
                             QStringLiteral("7"));
    QCOMPARE(editor.mark(), notApplied);
    editor.click("btnVarApply");
    QCOMPARE(editor.mark(), QString());
    editor.showVariable("B2");
    editor.editShownVariable(QStringLiteral("frmBoolVarEdit"), QStringLiteral("txtVarON"),
                             QStringLiteral("running"));
    QCOMPARE(editor.mark(), notApplied);
    editor.showVariable("B3");
    QCOMPARE(editor.mark(), QString());
    QVERIFY(allModalsServed());
}

void NotAppliedTest::anEditThatChangesNothingIsNoEdit() {
    Marked editor;
    editor.showVariable("B2");
    editor.editShownVariable(QStringLiteral("frmBoolVarEdit"), QStringLiteral("txtVarON"),
                             QString::fromStdString(editor.project.CoilVar[1].onText));
    QVERIFY(editor.applies("btnVarApply"));
    QCOMPARE(editor.mark(), QString());
    QVERIFY(allModalsServed());
}

void NotAppliedTest::anyNewAddressIsNotApplied() {
    Marked editor;
    editor.showPage("C2");
    for (const char* box : {"txtNewStdAddr", "txtNewAltAddr", "txtNewAIAddr", "txtNewDIAddr"}) {
        QCOMPARE(editor.mark(), QString());
        editor.type(box, QStringLiteral("x"));
        QCOMPARE(editor.mark(), notApplied);
        editor.type(box, {});
    }
    editor.type("txtNewAltAddr", QStringLiteral("1"));
    editor.click("btnRestoreDefault");
    QCOMPARE(editor.mark(), QString());
}

QTEST_MAIN(NotAppliedTest)
#include "NotAppliedTest.moc"
