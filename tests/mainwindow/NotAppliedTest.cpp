#include "tests/support/EditorFixture.h"
#include "tests/support/ModalDriver.h"
#include "widgets/NotAppliedLabel.h"

#include <QPlainTextEdit>
#include <QPushButton>

using namespace orvista;
using namespace orvista::testing;

namespace {

const QString notApplied = QStringLiteral("not applied; Save leaves it out");

struct Marked : EditorFixture {
    Marked() { startWithNewProject(); }
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
    void theMarkMovesNothingOnThePage();
    void aNarrowPageCutsTheMark();
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
    QCOMPARE(editor.notAppliedMark(), QString());
    QTest::keyClicks(editor.script(), QStringLiteral("x"));
    QCOMPARE(editor.notAppliedMark(), notApplied);
    QTest::keyClick(editor.script(), Qt::Key_Backspace);
    QCOMPARE(editor.notAppliedMark(), QString());
    QVERIFY(editor.applies("btnMsgApply"));
}

void NotAppliedTest::theMarkMovesNothingOnThePage() {
    Marked editor;
    editor.showMessage("R1");
    editor.window->resize(editor.window->minimumSizeHint());
    QCoreApplication::processEvents();
    const auto places = [&editor] {
        QList<QRect> all;
        for (const char* name : {"trvMsg", "txtMsg", "displayPreview", "btnEditMessage", "btnMsgApply"}) {
            const auto* const widget = editor.find<QWidget>(name);
            all << QRect(widget->mapTo(editor.window.get(), QPoint()), widget->size());
        }
        return all;
    };
    const QList<QRect> before = places();
    QTest::keyClicks(editor.script(), QStringLiteral("x"));
    QCoreApplication::processEvents();
    QCOMPARE(editor.notAppliedMark(), notApplied);
    QCOMPARE(places(), before);
}

void NotAppliedTest::aNarrowPageCutsTheMark() {
    NotAppliedLabel label;
    label.showState(true);
    label.resize(label.sizeHint());
    const auto ink = [&label] { return label.grab().toImage(); };
    const QImage whole = ink();
    label.resize(label.minimumSizeHint());
    QVERIFY(label.width() < whole.width());
    QVERIFY(ink() != whole.copy(label.rect()));
    QCOMPARE(label.toolTip(), notApplied);
}

void NotAppliedTest::anEmptiedScriptIsNotAppliedThoughApplyIsDisabled() {
    Marked editor;
    editor.showMessage("E1");
    editor.script()->selectAll();
    QTest::keyClick(editor.script(), Qt::Key_Delete);
    QVERIFY(!editor.applies("btnMsgApply"));
    QCOMPARE(editor.notAppliedMark(), notApplied);
}

void NotAppliedTest::applyAndAnotherMessageTakeTheMarkAway() {
    Marked editor;
    editor.showMessage("R1");
    QTest::keyClicks(editor.script(), QStringLiteral("x"));
    editor.click("btnMsgApply");
    QCOMPARE(editor.notAppliedMark(), QString());
    QTest::keyClicks(editor.script(), QStringLiteral("y"));
    QCOMPARE(editor.notAppliedMark(), notApplied);
    editor.showMessage("R2");
    QCOMPARE(editor.notAppliedMark(), QString());
    QTest::keyClicks(editor.script(), QStringLiteral("z"));
    editor.showMessage("REGULAR");
    QCOMPARE(editor.notAppliedMark(), QString());
}

void NotAppliedTest::aRefreshTakesTheMarkAway() {
    Marked editor;
    editor.showMessage("R1");
    QTest::keyClicks(editor.script(), QStringLiteral("x"));
    editor.window->RefreshViews();
    QCOMPARE(editor.notAppliedMark(), QString());
}

void NotAppliedTest::aLongScriptIsComparedWhenTheKeysRest() {
    Marked editor;
    for (int line = 0; line < 8'000; ++line)
        editor.project.STDMSG[0] += "STILL 500\r\n";
    editor.showMessage("R1");
    QCOMPARE(editor.notAppliedMark(), QString());
    QTest::keyClicks(editor.script(), QStringLiteral("x"));
    QTRY_COMPARE(editor.notAppliedMark(), notApplied);
    QTest::keyClick(editor.script(), Qt::Key_Backspace);
    QTRY_COMPARE(editor.notAppliedMark(), QString());
}

void NotAppliedTest::everyByteOfAMessageComparesEqual() {
    Marked editor;
    for (int byte = 0; byte < 256; ++byte)
        editor.project.STDMSG[0].push_back(static_cast<char>(byte));
    editor.project.STDMSG[0] += std::string(30'000, 'x');
    editor.showMessage("R1");
    QCOMPARE(editor.notAppliedMark(), QString());
}

void NotAppliedTest::anEditedVariableIsNotAppliedUntilItIs() {
    Marked editor;
    editor.showVariable("F5");
    QCOMPARE(editor.notAppliedMark(), QString());
    editor.editShownVariable(QStringLiteral("frmFloatVarEdit"), QStringLiteral("txtVarDefValue"),
                             QStringLiteral("7"));
    QCOMPARE(editor.notAppliedMark(), notApplied);
    editor.click("btnVarApply");
    QCOMPARE(editor.notAppliedMark(), QString());
    editor.showVariable("B2");
    editor.editShownVariable(QStringLiteral("frmBoolVarEdit"), QStringLiteral("txtVarON"),
                             QStringLiteral("running"));
    QCOMPARE(editor.notAppliedMark(), notApplied);
    editor.showVariable("B3");
    QCOMPARE(editor.notAppliedMark(), QString());
    QVERIFY(allModalsServed());
}

void NotAppliedTest::anEditThatChangesNothingIsNoEdit() {
    Marked editor;
    editor.showVariable("B2");
    editor.editShownVariable(QStringLiteral("frmBoolVarEdit"), QStringLiteral("txtVarON"),
                             QString::fromStdString(editor.project.CoilVar[1].onText));
    QVERIFY(editor.applies("btnVarApply"));
    QCOMPARE(editor.notAppliedMark(), QString());
    QVERIFY(allModalsServed());
}

void NotAppliedTest::anyNewAddressIsNotApplied() {
    Marked editor;
    editor.showPage("C2");
    for (const char* box : {"txtNewStdAddr", "txtNewAltAddr", "txtNewAIAddr", "txtNewDIAddr"}) {
        QCOMPARE(editor.notAppliedMark(), QString());
        editor.type(box, QStringLiteral("x"));
        QCOMPARE(editor.notAppliedMark(), notApplied);
        editor.type(box, {});
    }
    editor.type("txtNewAltAddr", QStringLiteral("1"));
    editor.click("btnRestoreDefault");
    QCOMPARE(editor.notAppliedMark(), QString());
}

QTEST_MAIN(NotAppliedTest)
#include "NotAppliedTest.moc"
