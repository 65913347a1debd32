#include "check/forms/FindingsPanel.h"
#include "tests/support/EditorFixture.h"

#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QPlainTextEdit>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTabWidget>
#include <QTableView>
#include <QTimer>

using namespace orvista;
using namespace orvista::testing;

namespace {

/// An editor whose message 12 has an unknown command in its second line.
struct Checked : EditorFixture {
    Checked() {
        startWithNewProject();
        project.STDMSG[11] = "CLEAR\r\nNONSENSE\r\n";
    }
    QTableView* table() const { return find<QTableView>("tblFindings"); }
    /// The shown rows without their sentences, each as one line; " (not applied)" is kept.
    QStringList rows() const {
        QStringList lines;
        const QAbstractItemModel& model = *table()->model();
        for (int row = 0; row < model.rowCount(); ++row) {
            QStringList cells;
            for (const int column : {0, 1, 3, 4}) // the label is left out
                cells << model.index(row, column).data().toString();
            const QString sentence = model.index(row, 6).data().toString();
            if (sentence.endsWith(QStringLiteral(" (not applied)")))
                cells << QStringLiteral("(not applied)");
            lines << cells.join(u'|');
        }
        return lines;
    }
    QString summary() const { return find<QLabel>("lblFindings")->text(); }
    void choose(int row) const { table()->setCurrentIndex(table()->model()->index(row, 0)); }
    void pressEnter() const {
        table()->setFocus();
        QTest::keyClick(table(), Qt::Key_Return);
    }
};

const QString unknownInTwelve = QStringLiteral("error|STDMSG12|2|unknown-command");

} // namespace

class FindingsTest : public QObject {
    Q_OBJECT
private slots:
    void toolsCheckOpensThePanel();
    void theFocusStaysOnThePage();
    void theDefaultProjectHasNoFindings();
    void notesAreShownWhenAskedFor();
    void theFilterLeavesWhatHasTheWord();
    void aChangeIsCheckedSoon();
    void nothingIsCheckedUnderAModalDialogOrWhileThePanelIsHidden();
    void rowsOfAnItemThatIsNotAppliedSaySo();
    void aRowLeadsToItsLine();
    void aRowIsReachedByTheKeyboardAlone();
    void anEditThatWouldBeLostIsDiscardedByTheSecondEnterOnly();
    void anotherRowAsksAgain();
    void withoutAProjectThePanelIsEmptyAndDisabled();
    void thePreviewsColumnsAreThoseOfTheCheck();
    void aSmallWindowHasRoomForSixLinesOfTheScript();
    void viewPanelsShowsAndHidesTheDock();
};

void FindingsTest::toolsCheckOpensThePanel() {
    Checked editor;
    QVERIFY(!editor.find<QWidget>("dockPanels")->isVisible());
    QTest::keyClick(editor.window.get(), Qt::Key_F8);
    QVERIFY(editor.table()->isVisible());
    QCOMPARE(editor.find<QTabWidget>("tabPanels")->tabText(0), QStringLiteral("Findings"));
    QCOMPARE(editor.rows(), QStringList{unknownInTwelve});
    QCOMPARE(editor.summary(), QStringLiteral("1 error"));
    QCOMPARE(editor.find<QLabel>("lblFindingsColumns")->text(), QStringLiteral("for 128 columns"));
}

void FindingsTest::theFocusStaysOnThePage() {
    Checked editor;
    editor.showMessage("R12");
    auto* const box = editor.find<QPlainTextEdit>("txtMsg");
    box->setFocus();
    QTest::keyClick(box, Qt::Key_F8);
    QCoreApplication::processEvents();
    QVERIFY(editor.table()->isVisible());
    QVERIFY(box->hasFocus());
    editor.table()->setFocus();
    QTest::keyClick(editor.table(), Qt::Key_Escape);
    QVERIFY(box->hasFocus());
}

void FindingsTest::theDefaultProjectHasNoFindings() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.trigger("miToolsCheck");
    QCOMPARE(editor.find<QLabel>("lblFindings")->text(), QStringLiteral("No findings"));
    QCOMPARE(editor.find<QTableView>("tblFindings")->model()->rowCount(), 0);
}

void FindingsTest::notesAreShownWhenAskedFor() {
    Checked editor;
    editor.project.RegVar[2].defaultValue = "1.5"; // set up, and shown by no message
    editor.trigger("miToolsCheck");
    QCOMPARE(editor.rows(), QStringList{unknownInTwelve});
    editor.click("chkFindingsNotes");
    QCOMPARE(editor.rows(), (QStringList{"note|RegVar3||not-in-use", unknownInTwelve}));
    QCOMPARE(editor.summary(), QStringLiteral("1 error, 1 note"));
    editor.click("chkFindingsNotes");
    QCOMPARE(editor.rows(), QStringList{unknownInTwelve});
}

void FindingsTest::theFilterLeavesWhatHasTheWord() {
    Checked editor;
    editor.project.ALTMSG[0] = "NONSENSE";
    editor.trigger("miToolsCheck");
    QCOMPARE(editor.rows().size(), 2);
    editor.type("txtFindingsFilter", QStringLiteral("altmsg"));
    QCOMPARE(editor.rows(), QStringList{"error|ALTMSG1|1|unknown-command"});
}

void FindingsTest::aChangeIsCheckedSoon() {
    Checked editor;
    editor.trigger("miToolsCheck");
    editor.showMessage("R12");
    editor.find<QPlainTextEdit>("txtMsg")->setPlainText(QStringLiteral("CLEAR"));
    QCOMPARE(editor.rows().size(), 1);
    editor.click("btnMsgApply");
    QTRY_COMPARE(editor.summary(), QStringLiteral("No findings"));
}

void FindingsTest::nothingIsCheckedUnderAModalDialogOrWhileThePanelIsHidden() {
    Checked editor;
    editor.trigger("miToolsCheck");
    QSignalSpy delayIsOver(editor.window->findChild<FindingsPanel*>()->findChild<QTimer*>(),
                           &QTimer::timeout);
    QDialog dialog(editor.window.get());
    dialog.setModal(true);
    dialog.show();
    editor.project.STDMSG[11] = "CLEAR";
    editor.window->lifecycle().SetModified(true);
    QVERIFY(delayIsOver.wait());
    QCOMPARE(editor.rows(), QStringList{unknownInTwelve});
    dialog.hide();
    QTRY_COMPARE(editor.summary(), QStringLiteral("No findings"));

    editor.trigger("miViewPanels");
    editor.project.STDMSG[11] = "CLEAR\r\nNONSENSE";
    editor.window->lifecycle().SetModified(true);
    delayIsOver.clear();
    QVERIFY(delayIsOver.wait());
    QCOMPARE(editor.summary(), QStringLiteral("No findings"));
    editor.trigger("miViewPanels");
    QTRY_COMPARE(editor.rows(), QStringList{unknownInTwelve});
}

void FindingsTest::rowsOfAnItemThatIsNotAppliedSaySo() {
    Checked editor;
    editor.trigger("miToolsCheck");
    editor.showMessage("R12");
    QTest::keyClicks(editor.find<QPlainTextEdit>("txtMsg"), QStringLiteral("x"));
    QCOMPARE(editor.rows(), QStringList{unknownInTwelve + QStringLiteral("|(not applied)")});
    QTest::keyClick(editor.find<QPlainTextEdit>("txtMsg"), Qt::Key_Backspace);
    QCOMPARE(editor.rows(), QStringList{unknownInTwelve});
}

void FindingsTest::aRowLeadsToItsLine() {
    Checked editor;
    editor.trigger("miToolsCheck");
    editor.choose(0);
    QCOMPARE(editor.find<QTabWidget>("tabDetails")->currentIndex(), 0);
    editor.pressEnter();
    QCOMPARE(editor.find<QTabWidget>("tabDetails")->currentIndex(), 3);
    QCOMPARE(editor.text("txtMsgName"), QStringLiteral("STDMSG12"));
    QCOMPARE(editor.find<QPlainTextEdit>("txtMsg")->textCursor().selectedText(), QStringLiteral("NONSENSE"));
}

void FindingsTest::aRowIsReachedByTheKeyboardAlone() {
    Checked editor;
    editor.project.STDMSG[20] = "CLEAR\r\nACT STILL 1\r\nNONSENSE too";
    editor.showMessage("R3");
    auto* const box = editor.find<QPlainTextEdit>("txtMsg");
    box->setFocus();
    const auto press = [](Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); };
    press(Qt::Key_F8);
    constexpr int mostTabs = 30;
    for (int i = 0; i < mostTabs && !editor.table()->hasFocus(); ++i)
        press(Qt::Key_Tab);
    QVERIFY(editor.table()->hasFocus());
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    press(Qt::Key_Enter);
    QCOMPARE(editor.text("txtMsgName"), QStringLiteral("STDMSG21"));
    QCOMPARE(box->textCursor().selectedText(), QStringLiteral("NONSENSE too"));
    QVERIFY(box->hasFocus());
    press(Qt::Key_Backspace);
    QCOMPARE(box->toPlainText(), QStringLiteral("CLEAR\nACT STILL 1\n"));
}

void FindingsTest::anEditThatWouldBeLostIsDiscardedByTheSecondEnterOnly() {
    Checked editor;
    editor.showMessage("R3");
    QTest::keyClicks(editor.find<QPlainTextEdit>("txtMsg"), QStringLiteral("x"));
    editor.trigger("miToolsCheck");
    editor.choose(0);
    editor.pressEnter();
    QCOMPARE(editor.notice(),
             QStringLiteral("STDMSG3 has an edit that is not applied. Go there again to discard it."));
    QCOMPARE(editor.text("txtMsgName"), QStringLiteral("STDMSG3"));
    editor.pressEnter();
    QCOMPARE(editor.text("txtMsgName"), QStringLiteral("STDMSG12"));
    QCOMPARE(editor.notice(), QString());
}

void FindingsTest::anotherRowAsksAgain() {
    Checked editor;
    editor.project.STDMSG[20] = "NONSENSE";
    editor.showMessage("R3");
    QTest::keyClicks(editor.find<QPlainTextEdit>("txtMsg"), QStringLiteral("x"));
    editor.trigger("miToolsCheck");
    editor.choose(0);
    editor.pressEnter();
    QTest::keyClick(editor.table(), Qt::Key_Down);
    QCOMPARE(editor.notice(), QString());
    QTest::keyClick(editor.table(), Qt::Key_Up);
    editor.pressEnter();
    QCOMPARE(editor.text("txtMsgName"), QStringLiteral("STDMSG3"));
    QVERIFY(!editor.notice().isEmpty());
}

void FindingsTest::withoutAProjectThePanelIsEmptyAndDisabled() {
    Checked editor;
    editor.trigger("miToolsCheck");
    editor.window->lifecycle().InitProject();
    QVERIFY(!editor.enabled("miToolsCheck"));
    QVERIFY(!editor.table()->isEnabled());
    QTRY_COMPARE(editor.summary(), QStringLiteral("No findings"));
    QVERIFY(editor.enabled("miViewPanels"));
}

void FindingsTest::thePreviewsColumnsAreThoseOfTheCheck() {
    Checked editor;
    editor.project.STDMSG[11] = "CLEAR\r\nTEXT 0 0 RED BLACK \"123456789012345678901\"\r\nACT STILL 500";
    auto* const columns = editor.find<QSpinBox>("spnPreviewColumns");
    columns->setValue(160); // before the panel is there
    editor.trigger("miToolsCheck");
    QCOMPARE(editor.find<QLabel>("lblFindingsColumns")->text(), QStringLiteral("for 160 columns"));
    QCOMPARE(editor.rows(), QStringList{"warning|STDMSG12|2|text-cut"});
    columns->setValue(168);
    QTRY_COMPARE(editor.find<QLabel>("lblFindingsColumns")->text(), QStringLiteral("for 168 columns"));
    QCOMPARE(editor.rows(), QStringList());
}

void FindingsTest::aSmallWindowHasRoomForSixLinesOfTheScript() {
    Checked editor;
    editor.showMessage("R12");
    editor.trigger("miToolsCheck");
    QVERIFY(editor.find<QWidget>("displayPreview")->isVisible());
    const QSize small = editor.resizeToLetters({800, 600});
    QTRY_COMPARE(editor.window->size(), small);
    const auto* const box = editor.find<QPlainTextEdit>("txtMsg");
    const auto room = box->viewport()->height() - 2 * box->document()->documentMargin();
    QVERIFY(room >= 6 * box->fontMetrics().lineSpacing());
    QCOMPARE(box->visibleRegion().boundingRect().height(), box->height()); // nothing is scrolled away
}

void FindingsTest::viewPanelsShowsAndHidesTheDock() {
    EditorFixture editor;
    editor.start();
    auto* const dock = editor.find<QWidget>("dockPanels");
    auto* const entry = editor.find<QAction>("miViewPanels");
    QVERIFY(entry->isCheckable());
    QVERIFY(!entry->isChecked());
    editor.trigger("miViewPanels");
    QVERIFY(dock->isVisible());
    QVERIFY(entry->isChecked());
    editor.trigger("miViewPanels");
    QVERIFY(!dock->isVisible());
    QVERIFY(!entry->isChecked());
}

QTEST_MAIN(FindingsTest)
#include "FindingsTest.moc"
