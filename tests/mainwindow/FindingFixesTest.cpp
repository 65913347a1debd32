#include "check/forms/FindingsPanel.h"
#include "display/SettledPage.h"
#include "tests/support/EditorFixture.h"
#include "tests/support/ModalDriver.h"
#include "widgets/DeviceTextEdit.h"
#include "widgets/PanelView.h"
#include "widgets/RowsTable.h"

#include <QAbstractItemView>
#include <QAction>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <QTimer>

using namespace orvista;
using namespace orvista::testing;

namespace {

const std::string gap = "CLEAR\r\nTEXT 0 0 RED BLACK \"Level   m\"\r\nDISPVAR 48 0 RED BLACK RegVar1";
const std::string mendedGap =
    "CLEAR\r\nTEXT 0 0 RED BLACK \"Level        m\"\r\nDISPVAR 48 0 RED BLACK RegVar1";

/// An editor with two values that have too few blanks, and a mistyped word.
struct Wrong : EditorFixture {
    Wrong() {
        startWithNewProject();
        project.STDMSG[2] = gap;
        project.STDMSG[4] = "TXET 0 0 RED BLACK \"a\"";
        project.ALTMSG[0] = gap;
        press(Qt::Key_F8);
        table()->setCurrentIndex(table()->model()->index(0, 0));
    }
    RowsTable* table() const { return find<RowsTable>("tblFindings"); }
    int count() const { return table()->model()->rowCount(); }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const {
        QTest::keyClick(window.get(), key, modifiers);
    }
    void pressInTable(Qt::Key key, Qt::KeyboardModifiers modifiers) const {
        table()->setFocus();
        QTest::keyClick(table(), key, modifiers);
    }
    QString notice() const { return find<QLabel>("lblNotice")->text(); }
    /// Opens the context menu and chooses the entry of that text.
    void chooseInMenu(const QString& text) const {
        QTimer::singleShot(0, [text] {
            auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            QVERIFY(menu);
            for (QAction* const action : menu->actions())
                if (action->text() == text && action->isEnabled()) {
                    menu->setActiveAction(action);
                    QTest::keyClick(menu, Qt::Key_Return);
                    return;
                }
            menu->close();
            QFAIL("no such entry");
        });
        emit table()->customContextMenuRequested({5, 5});
    }
};

} // namespace

class FindingFixesTest : public QObject {
    Q_OBJECT
private slots:
    void rowsForWhichAFixIsKnownAreMarked();
    void altEnterTakesTheFirstFix();
    void whereNoFixHoldsTheLineSaysSo();
    void theMenuNamesTheFixes();
    void allOfAKindAreMendedInOneStep();
    void whatIsNotSureIsNotTicked();
    void theOthersHoldWithoutARowThatIsNotTicked();
    void stopEndsTheTrialsAndNothingIsChanged();
    void nothingIsChangedWhileAPageShowsAnEditOfTheItem();
    void nextAndPreviousFindingGoRound();
    void theFindingAfterOneThatIsMendedIsNext();
    void anEditThatWouldBeLostIsDiscardedByTheSecondKeyOnly();
    void withoutFindingsTheLineSaysSo();
    void f4OpensAListThatHasTheKeyboard();
    void f8AgainGoesIntoTheList();
};

void FindingFixesTest::rowsForWhichAFixIsKnownAreMarked() {
    Wrong editor;
    editor.project.STDMSG[3] = "TEXT 0 0 RED RED \"a\""; // invisible, which is for people to mend
    editor.press(Qt::Key_F8);
    QStringList marks;
    for (int row = 0; row < editor.count(); ++row)
        marks << editor.table()->model()->index(row, 5).data().toString();
    const QString mark = QStringLiteral("\u2022");
    QCOMPARE(marks, (QStringList{mark, QString(), mark, mark}));
}

void FindingFixesTest::altEnterTakesTheFirstFix() {
    Wrong editor;
    editor.pressInTable(Qt::Key_Return, Qt::AltModifier);
    QCOMPARE(editor.project.STDMSG[2], mendedGap);
    QCOMPARE(editor.count(), 2);
    QVERIFY(editor.project.modified);
    QCOMPARE(editor.find<QAction>("miEditUndo")->text().remove(u'&').section(u'\t', 0, 0),
             QStringLiteral("Undo Fix"));
    editor.trigger("miEditUndo");
    QCOMPARE(editor.project.STDMSG[2], gap);
}

void FindingFixesTest::whereNoFixHoldsTheLineSaysSo() {
    Wrong editor;
    editor.project.STDMSG[2] = "HELLO";
    editor.pressInTable(Qt::Key_Return, Qt::AltModifier);
    QCOMPARE(editor.project.STDMSG[2], std::string("HELLO"));
    QCOMPARE(editor.notice(),
             QStringLiteral("No fix is known that mends this finding and leaves the others as they are"));
}

void FindingFixesTest::theMenuNamesTheFixes() {
    Wrong editor;
    editor.chooseInMenu(QStringLiteral("Fix: Leave 7 blanks"));
    QCOMPARE(editor.project.STDMSG[2], mendedGap);
    QCOMPARE(editor.project.ALTMSG[0], gap);
}

/// How the only page of a script looks.
LedRaster raster(const std::string& script) {
    const Project project;
    const Programme programme = programmeOfLine(script, 1, {128}, fieldFormats(project), NoBitmaps());
    return settledPage(programme, 0, defaultValues(project));
}

/// Runs `look` in the dialog of the fixes, then presses its button.
template <typename Look>
void inFixes(Look look) {
    onModal(QStringLiteral("frmFixes"), [look](QWidget* dialog) {
        look(*dialog->findChild<RowsTable*>(QStringLiteral("tblFixes")), *dialog);
        dialog->findChild<QPushButton*>(QStringLiteral("btnOK"))->click();
    });
}

void FindingFixesTest::allOfAKindAreMendedInOneStep() {
    Wrong editor;
    inFixes([](RowsTable& table, QWidget& dialog) {
        QCOMPARE(table.model()->rowCount(), 2);
        QCOMPARE(table.ticks(), std::vector<bool>({true, true}));
        QCOMPARE(dialog.findChild<QLabel*>(QStringLiteral("lblFixes"))->text(),
                 QStringLiteral("2 fixes, 2 ticked"));
        QCOMPARE(dialog.findChild<QPlainTextEdit*>(QStringLiteral("txtFixesNew"))->toPlainText(),
                 QStringLiteral("TEXT 0 0 RED BLACK \"Level        m\""));
        // Each row's page, also of one that stands on those above it, and back.
        for (const int row : {0, 1, 0}) {
            table.setCurrentIndex(table.model()->index(row, 0));
            const auto* const before = dialog.findChild<PanelView*>(QStringLiteral("panelBefore"));
            const auto* const after = dialog.findChild<PanelView*>(QStringLiteral("panelAfter"));
            QVERIFY(before->isVisible());
            QVERIFY(before->shown() == raster(gap));
            QVERIFY(after->shown() == raster(mendedGap));
        }
    });
    editor.chooseInMenu(QStringLiteral("Fix All of This &Kind\u2026"));
    QVERIFY(allModalsServed());
    QCOMPARE(editor.project.STDMSG[2], mendedGap);
    QCOMPARE(editor.project.ALTMSG[0], mendedGap);
    QCOMPARE(editor.find<QAction>("miEditUndo")->text().remove(u'&').section(u'\t', 0, 0),
             QStringLiteral("Undo Fix"));
    editor.trigger("miEditUndo");
    QCOMPARE(editor.project.STDMSG[2], gap);
    QCOMPARE(editor.project.ALTMSG[0], gap);
}

void FindingFixesTest::whatIsNotSureIsNotTicked() {
    Wrong editor;
    inFixes([](RowsTable& table, QWidget&) {
        QCOMPARE(table.ticks(), std::vector<bool>({true, true, false}));
    });
    editor.chooseInMenu(QStringLiteral("Fix &All\u2026"));
    QVERIFY(allModalsServed());
    QCOMPARE(editor.project.STDMSG[4], std::string("TXET 0 0 RED BLACK \"a\""));
    QCOMPARE(editor.project.ALTMSG[0], mendedGap);
}

void FindingFixesTest::theOthersHoldWithoutARowThatIsNotTicked() {
    Wrong editor;
    const std::string cut = "TEXT 0 0 RED BLACK \"Emergency stop pump\"\r\nACT STILL 1\r\n";
    editor.project.STDMSG[2] = cut + "CLEAR\r\n" + gap;
    inFixes([](RowsTable& table, QWidget&) { table.setTicks({false, true, false, false}); });
    editor.chooseInMenu(QStringLiteral("Fix &All\u2026"));
    QVERIFY(allModalsServed());
    QCOMPARE(editor.project.STDMSG[2], cut + "CLEAR\r\n" + mendedGap);
}

void FindingFixesTest::stopEndsTheTrialsAndNothingIsChanged() {
    Wrong editor;
    std::string pages;
    while (pages.size() < 64 * 1024)
        pages += gap + "\r\nACT STILL 500\r\n";
    editor.project.STDMSG.fill(pages);
    const auto before = editor.project.STDMSG;
    QTimer looking;
    int stops = 0;
    QObject::connect(&looking, &QTimer::timeout, [&stops] {
        auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (dialog == nullptr)
            return;
        auto* const stop = dialog->findChild<QPushButton*>();
        if (dialog->objectName() != QStringLiteral("frmFixing") || stop->text() != QStringLiteral("Stop"))
            return dialog->reject();
        ++stops;
        QTest::mouseClick(stop, Qt::LeftButton);
    });
    looking.start(0);
    editor.chooseInMenu(QStringLiteral("Fix &All\u2026"));
    QCOMPARE(stops, 1);
    QCOMPARE(editor.project.STDMSG, before);
    QCOMPARE(editor.notice(), QString());
}

void FindingFixesTest::nothingIsChangedWhileAPageShowsAnEditOfTheItem() {
    Wrong editor;
    editor.press(Qt::Key_F4);
    editor.find<QPlainTextEdit>("txtMsg")->appendPlainText(QStringLiteral("x"));
    editor.pressInTable(Qt::Key_Return, Qt::AltModifier);
    QCOMPARE(editor.project.STDMSG[2], gap);
    QVERIFY(editor.notice().startsWith(QStringLiteral("Not done: ")));
}

void FindingFixesTest::nextAndPreviousFindingGoRound() {
    Wrong editor;
    editor.press(Qt::Key_F4, Qt::ShiftModifier);
    QCOMPARE(editor.table()->currentIndex().row(), 2);
    QVERIFY(editor.notice().startsWith(QStringLiteral("ALTMSG1: RegVar1 is 7 wide")));
    editor.press(Qt::Key_F4);
    QCOMPARE(editor.table()->currentIndex().row(), 0);
    editor.press(Qt::Key_F4);
    QCOMPARE(editor.table()->currentIndex().row(), 1);
    QVERIFY(editor.notice().startsWith(QStringLiteral("STDMSG5: ")));
}

void FindingFixesTest::theFindingAfterOneThatIsMendedIsNext() {
    Wrong editor;
    const auto mendShown = [&editor](const std::string& script) {
        editor.find<DeviceTextEdit>("txtMsg")->setBytes(script);
        editor.click("btnMsgApply");
    };
    editor.press(Qt::Key_F4);
    editor.press(Qt::Key_F4);
    QVERIFY(editor.notice().startsWith(QStringLiteral("ALTMSG1: ")));
    editor.press(Qt::Key_F4, Qt::ShiftModifier);
    QVERIFY(editor.notice().startsWith(QStringLiteral("STDMSG5: ")));
    mendShown("CLEAR");
    QTRY_COMPARE(editor.count(), 2); // it is checked in between, or by the key
    editor.press(Qt::Key_F4);
    QVERIFY(editor.notice().startsWith(QStringLiteral("ALTMSG1: ")));
    mendShown(mendedGap); // the last one
    editor.press(Qt::Key_F4);
    QVERIFY(editor.notice().startsWith(QStringLiteral("STDMSG3: ")));
}

void FindingFixesTest::anEditThatWouldBeLostIsDiscardedByTheSecondKeyOnly() {
    Wrong editor;
    editor.press(Qt::Key_F4); // from the first row to STDMSG5
    const auto barred =
        QStringLiteral("STDMSG5 has an edit that is not applied. Go there again to discard it.");
    const auto edit = [&editor] {
        editor.find<QPlainTextEdit>("txtMsg")->appendPlainText(QStringLiteral("x"));
    };
    edit();
    editor.press(Qt::Key_F4);
    QCOMPARE(editor.notice(), barred);
    editor.press(Qt::Key_F4, Qt::ShiftModifier); // back to the edit
    QVERIFY(editor.notice().startsWith(QStringLiteral("STDMSG5: ")));
    editor.press(Qt::Key_F4);
    QCOMPARE(editor.notice(), barred);
    editor.press(Qt::Key_F4);
    QVERIFY(editor.notice().startsWith(QStringLiteral("ALTMSG1: ")));
    QCOMPARE(editor.find<DeviceTextEdit>("txtMsg")->bytes(), gap);
}

void FindingFixesTest::withoutFindingsTheLineSaysSo() {
    Wrong editor;
    editor.find<QLineEdit>("txtFindingsFilter")->setText(QStringLiteral("nowhere"));
    editor.press(Qt::Key_F4);
    QCOMPARE(editor.notice(), QStringLiteral("No finding has the text of the filter"));
    editor.project.STDMSG[2] = editor.project.STDMSG[4] = editor.project.ALTMSG[0] = "CLEAR";
    editor.press(Qt::Key_F4);
    QCOMPARE(editor.notice(), QStringLiteral("No findings"));
}

void FindingFixesTest::f4OpensAListThatHasTheKeyboard() {
    Wrong editor;
    editor.press(Qt::Key_F4);
    auto* const list = editor.find<QComboBox>("cboPreviewValues");
    list->setFocus();
    const auto isOpen = [list] { return list->view()->isVisible(); };
    QTest::keyClick(list, Qt::Key_F4);
    QVERIFY(isOpen());
    list->hidePopup();
    QTRY_VERIFY(!isOpen());
    const int row = editor.table()->currentIndex().row();
    QTest::keyClick(list, Qt::Key_F4, Qt::ShiftModifier);
    QVERIFY(!isOpen());
    QCOMPARE(editor.table()->currentIndex().row(), row - 1);
}

void FindingFixesTest::f8AgainGoesIntoTheList() {
    const Wrong editor;
    QVERIFY(!editor.table()->hasFocus());
    editor.press(Qt::Key_F8);
    QVERIFY(editor.table()->hasFocus());
}

QTEST_MAIN(FindingFixesTest)
#include "FindingFixesTest.moc"
