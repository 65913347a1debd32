#include "items/forms/MessagesPanel.h"
#include "tests/support/EditorFixture.h"
#include "widgets/RowsTable.h"

#include <QDialog>
#include <QPlainTextEdit>
#include <QSpinBox>
#include <QTabWidget>

using namespace orvista;
using namespace orvista::testing;

namespace {

/// An editor with three messages that are set up, and a fourth that nobody can read.
struct Plant : EditorFixture {
    Plant() {
        startWithNewProject();
        project.STDMSG[0] =
            "CLEAR\r\nTEXT 0 0 GREEN BLACK \"Pump     on\"\r\nDISPVAR 40 0 RED BLACK RegVar3\r\n"
            "ACT STILL 1000\r\nCLEAR\r\nIMG 0 0 RED BLACK tank.bmp\r\nACT STILL 1000";
        project.STDMSG[2] = "CLEAR\r\nTEXT 0 0 RED BLACK \"Level\"\r\nACT STILL 1000\r\nNONSENSE\r\nX";
        project.ALTMSG[1] = "CLEAR\r\nTEXTS 0 5 RED BLACK \"\xDC"
                            "bertemperatur\"\r\n"
                            "DISPVARS 84 5 RED BLACK CoilVar2\r\nACT STILL 1000";
        project.ALTMSG[4] = "CLEAR\r\nTEXT 0 0 RED RED \"Dark\"\r\nACT STILL 1000";
    }
    RowsTable* table(const char* name) const { return find<RowsTable>(name); }
    RowsTable* messageTable() const { return table("tblMessages"); }
    QLineEdit* filter() const { return find<QLineEdit>("txtMessagesFilter"); }
    static QStringList cells(const RowsTable& table, int row) {
        QStringList texts;
        for (int column = 0; column < table.model()->columnCount(); ++column)
            texts << table.model()->index(row, column).data().toString();
        return texts;
    }
    static QStringList names(const RowsTable& table) {
        QStringList texts;
        for (int row = 0; row < table.model()->rowCount(); ++row)
            texts << table.model()->index(row, 0).data().toString();
        return texts;
    }
    QString message(int row) const { return cells(*messageTable(), row).join(u'|'); }
    QImage pictureOf(int row) const {
        const QModelIndex cell = messageTable()->model()->index(row, 5);
        QCoreApplication::processEvents(); // a table that was just opened has no size yet
        messageTable()->scrollTo(cell);
        return messageTable()->viewport()->grab(messageTable()->visualRect(cell)).toImage();
    }
};

bool isGrey(const RowsTable& table, int row) {
    return table.model()->index(row, 0).data(Qt::ForegroundRole).value<QBrush>().color() ==
           QGuiApplication::palette().color(QPalette::PlaceholderText);
}

} // namespace

class ItemPanelsTest : public QObject {
    Q_OBJECT
private slots:
    void viewMessagesListsAllSixty();
    void findingsAreMarkedAMomentLater();
    void emptyMessagesAreGrey();
    void thePictureShowsTheFirstPage();
    void thePictureIsAsWideAsThePreviewsColumns();
    void viewVariablesListsAllNinetySix();
    void theFilterLooksIntoNamesTextsAndScripts();
    void theFilterFoldsAccentedLettersAndFindsNothingForForeignOnes();
    void controlFOpensTheMessagesWithTheCursorInTheFilter();
    void downInTheFilterLeadsToTheRows();
    void enterInTheFilterLeadsToTheRows();
    void aRowLeadsToItsItem();
    void anEditThatWouldBeLostIsDiscardedByTheSecondEnterOnly();
    void rowsOfAnItemThatIsNotAppliedSaySo();
    void rowsFollowChanges();
    void nothingIsReadWhileThePanelIsHidden();
    void nothingIsReadUnderAModalDialog();
    void longScriptsAreReadInBetween();
    void aChangeKeepsTheSelection();
    void openingKeepsTheFocusOnThePage();
    void theEntriesAreThereWithoutAProject();
};

void ItemPanelsTest::viewMessagesListsAllSixty() {
    Plant editor;
    editor.trigger("miViewMessages");
    const RowsTable& table = *editor.messageTable();
    QVERIFY(table.isVisible());
    QCOMPARE(editor.find<QTabWidget>("tabPanels")->tabText(0), QStringLiteral("Messages"));
    QStringList heads;
    for (int column = 0; column < table.model()->columnCount(); ++column)
        heads << table.model()->headerData(column, Qt::Horizontal).toString();
    QCOMPARE(heads, (QStringList{"Name", "Label", "Address", "Reference", "Pages", "Display", "Text",
                                 "Variables", "Bitmaps", "Findings"}));
    QCOMPARE(table.model()->rowCount(), 60);
    QCOMPARE(editor.message(0), QStringLiteral("STDMSG1||320|00321|2||Pump %4von|RegVar3|tank.bmp|"));
    QCOMPARE(editor.message(2), QStringLiteral("STDMSG3||322|00323|1||Level|||"));
    QCOMPARE(editor.message(1), QStringLiteral("STDMSG2||321|00322|0|||||"));
    QCOMPARE(editor.message(41), QStringLiteral("ALTMSG2||301|00302|1||\u00DCbertemperatur%1v|CoilVar2||"));
    QCOMPARE(editor.cells(table, 59).first(), QStringLiteral("ALTMSG20"));
}

void ItemPanelsTest::findingsAreMarkedAMomentLater() {
    Plant editor;
    editor.trigger("miViewMessages");
    QTRY_COMPARE(editor.message(2), QStringLiteral("STDMSG3||322|00323|1||Level|||2 errors"));
    QVERIFY(editor.message(44).endsWith(QStringLiteral("|1 warning")));
    QVERIFY(
        editor.message(0).endsWith(QStringLiteral("|1 error, 1 warning"))); // no bitmap; the field is 7 wide
    QVERIFY(editor.message(1).endsWith(u'|'));
}

void ItemPanelsTest::emptyMessagesAreGrey() {
    Plant editor;
    editor.trigger("miViewMessages");
    const RowsTable& table = *editor.messageTable();
    QVERIFY(!isGrey(table, 0));
    QVERIFY(isGrey(table, 1));
    QVERIFY(!isGrey(table, 2));
    QVERIFY(isGrey(table, 59));
}

void ItemPanelsTest::thePictureShowsTheFirstPage() {
    Plant editor;
    editor.project.STDMSG[3] =
        "CLEAR\r\nCLEAR\r\nTEXT 0 0 RED BLACK \"Level\"\r\nIN GO-LEFT 1 50\r\nACT STILL 10";
    editor.trigger("miViewMessages");
    const QImage dark = editor.pictureOf(1);
    QVERIFY(dark.width() > 128);
    QVERIFY(editor.pictureOf(0) != dark);
    QVERIFY(editor.pictureOf(2) != dark);
    QVERIFY(editor.pictureOf(0) != editor.pictureOf(2));
    QCOMPARE(editor.pictureOf(3), editor.pictureOf(2)); // an empty page that takes no time is not seen
}

void ItemPanelsTest::thePictureIsAsWideAsThePreviewsColumns() {
    Plant editor;
    editor.trigger("miViewMessages");
    const int narrow = editor.messageTable()->columnWidth(5);
    editor.find<QSpinBox>("spnPreviewColumns")->setValue(512);
    QVERIFY(editor.messageTable()->columnWidth(5) >= 512);
    editor.find<QSpinBox>("spnPreviewColumns")->setValue(128);
    QCOMPARE(editor.messageTable()->columnWidth(5), narrow);
}

void ItemPanelsTest::viewVariablesListsAllNinetySix() {
    Plant editor;
    editor.project.ALTMSG[6] = editor.project.STDMSG[0];
    editor.project.CoilVar[1].onText = "OPEN";
    editor.trigger("miViewVariables");
    const RowsTable& table = *editor.table("tblVariables");
    QVERIFY(table.isVisible());
    QCOMPARE(table.model()->rowCount(), 96);
    QCOMPARE(editor.cells(table, 2),
             (QStringList{"RegVar3", "", "104", "40105", "0.0", "7.3", "STDMSG1 ALTMSG7"}));
    QCOMPARE(editor.cells(table, 65),
             (QStringList{"CoilVar2", "", "101", "00102", "0", "OFF/OPEN", "ALTMSG2"}));
    editor.type("txtVariablesFilter", QStringLiteral("altmsg7"));
    QCOMPARE(editor.names(table), QStringList{"RegVar3"});
}

void ItemPanelsTest::theFilterLooksIntoNamesTextsAndScripts() {
    Plant editor;
    editor.trigger("miViewMessages");
    const RowsTable& table = *editor.messageTable();
    editor.type("txtMessagesFilter", QStringLiteral("altmsg1"));
    QCOMPARE(editor.names(table).size(), 11);
    editor.type("txtMessagesFilter", QStringLiteral("%4vON"));
    QCOMPARE(editor.names(table), QStringList{"STDMSG1"});
    editor.type("txtMessagesFilter", QStringLiteral("nonsense"));
    QCOMPARE(editor.names(table), QStringList{"STDMSG3"});
    editor.type("txtMessagesFilter", QStringLiteral("322")); // an address is neither
    QCOMPARE(editor.names(table), QStringList());
    editor.filter()->clear();
    QCOMPARE(editor.names(table).size(), 60);
}

void ItemPanelsTest::theFilterFoldsAccentedLettersAndFindsNothingForForeignOnes() {
    Plant editor;
    editor.trigger("miViewMessages");
    editor.filter()->setText(QStringLiteral("\u00FCBER"));
    QCOMPARE(editor.names(*editor.messageTable()), QStringList{"ALTMSG2"});
    editor.filter()->setText(QStringLiteral("\u03A9"));
    QCOMPARE(editor.names(*editor.messageTable()), QStringList());
}

void ItemPanelsTest::controlFOpensTheMessagesWithTheCursorInTheFilter() {
    Plant editor;
    editor.showMessage("R1");
    auto* const box = editor.find<QPlainTextEdit>("txtMsg");
    box->setFocus();
    QTest::keyClick(box, Qt::Key_F, Qt::ControlModifier);
    QVERIFY(editor.messageTable()->isVisible());
    QTRY_VERIFY(editor.filter()->hasFocus());
    QTest::keyClicks(editor.filter(), QStringLiteral("level"));
    QCOMPARE(editor.names(*editor.messageTable()), QStringList{"STDMSG3"});
    QTest::keyClick(editor.filter(), Qt::Key_F, Qt::ControlModifier);
    QCOMPARE(editor.filter()->selectedText(), QStringLiteral("level"));
    QTest::keyClick(editor.filter(), Qt::Key_Escape);
    QCOMPARE(editor.filter()->text(), QString());
    QVERIFY(editor.filter()->hasFocus());
    QVERIFY(editor.names(*editor.messageTable()).size() > 1);
    QTest::keyClick(editor.filter(), Qt::Key_Escape);
    QVERIFY(box->hasFocus());
}

void ItemPanelsTest::downInTheFilterLeadsToTheRows() {
    Plant editor;
    QTest::keyClick(editor.window.get(), Qt::Key_F, Qt::ControlModifier);
    QTRY_VERIFY(editor.filter()->hasFocus());
    QTest::keyClicks(editor.filter(), QStringLiteral("level"));
    QTest::keyClick(editor.filter(), Qt::Key_Down);
    QVERIFY(editor.messageTable()->hasFocus());
    QCOMPARE(editor.messageTable()->selectedRows(), std::vector<int>{2});
    QCOMPARE(editor.filter()->text(), QStringLiteral("level"));
}

void ItemPanelsTest::enterInTheFilterLeadsToTheRows() {
    Plant editor;
    QTest::keyClick(editor.window.get(), Qt::Key_F, Qt::ControlModifier);
    QTRY_VERIFY(editor.filter()->hasFocus());
    QTest::keyClicks(editor.filter(), QStringLiteral("level"));
    QTest::keyClick(editor.filter(), Qt::Key_Return);
    QVERIFY(editor.messageTable()->hasFocus());
    QCOMPARE(editor.messageTable()->selectedRows(), std::vector<int>{2});
    QTest::keyClick(editor.messageTable(), Qt::Key_Return);
    QCOMPARE(editor.text("txtMsgName"), QStringLiteral("STDMSG3"));
}

void ItemPanelsTest::aRowLeadsToItsItem() {
    Plant editor;
    editor.trigger("miViewVariables");
    RowsTable& variables = *editor.table("tblVariables");
    variables.selectRow(65);
    QCOMPARE(editor.find<QTabWidget>("tabDetails")->currentIndex(), 0);
    QTest::keyClick(&variables, Qt::Key_Enter);
    QCOMPARE(editor.find<QTabWidget>("tabDetails")->currentIndex(), 2);
    QCOMPARE(editor.text("txtVarName"), QStringLiteral("CoilVar2"));
    editor.trigger("miViewMessages");
    RowsTable& messages = *editor.messageTable();
    const QPoint place = messages.visualRect(messages.model()->index(2, 0)).center();
    QTest::mouseClick(messages.viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(messages.viewport(), Qt::LeftButton, {}, place);
    QCOMPARE(editor.text("txtMsgName"), QStringLiteral("STDMSG3"));
}

void ItemPanelsTest::anEditThatWouldBeLostIsDiscardedByTheSecondEnterOnly() {
    Plant editor;
    editor.showMessage("R1");
    QTest::keyClicks(editor.find<QPlainTextEdit>("txtMsg"), QStringLiteral("x"));
    editor.trigger("miViewMessages");
    RowsTable& table = *editor.messageTable();
    table.setFocus();
    table.selectRow(2);
    QTest::keyClick(&table, Qt::Key_Return);
    QCOMPARE(editor.notice(),
             QStringLiteral("STDMSG1 has an edit that is not applied. Go there again to discard it."));
    QCOMPARE(editor.text("txtMsgName"), QStringLiteral("STDMSG1"));
    QTest::keyClick(&table, Qt::Key_Return);
    QCOMPARE(editor.text("txtMsgName"), QStringLiteral("STDMSG3"));
}

void ItemPanelsTest::rowsOfAnItemThatIsNotAppliedSaySo() {
    Plant editor;
    editor.trigger("miViewMessages");
    editor.showMessage("R2");
    auto* const box = editor.find<QPlainTextEdit>("txtMsg");
    QTest::keyClicks(box, QStringLiteral("x"));
    QVERIFY(editor.message(1).endsWith(QStringLiteral("| (not applied)")));
    QVERIFY(!editor.message(0).endsWith(QStringLiteral("(not applied)")));
    QTest::keyClick(box, Qt::Key_Backspace);
    QVERIFY(editor.message(1).endsWith(u'|'));
}

void ItemPanelsTest::rowsFollowChanges() {
    Plant editor;
    editor.trigger("miViewMessages");
    editor.showMessage("R2");
    const QImage before = editor.pictureOf(1);
    editor.find<QPlainTextEdit>("txtMsg")->setPlainText(
        QStringLiteral("CLEAR\nTEXT 0 0 RED BLACK \"Filter\"\nACT STILL 1000"));
    QCOMPARE(editor.message(1), QStringLiteral("STDMSG2||321|00322|0||||| (not applied)"));
    editor.click("btnMsgApply");
    QCOMPARE(editor.message(1), QStringLiteral("STDMSG2||321|00322|1||Filter|||"));
    QVERIFY(!isGrey(*editor.messageTable(), 1));
    QVERIFY(editor.pictureOf(1) != before);
    editor.messages.answers = {Answer::No};
    editor.newProject("Other");
    QCOMPARE(editor.message(1), QStringLiteral("STDMSG2||321|00322|0|||||"));
}

void ItemPanelsTest::nothingIsReadWhileThePanelIsHidden() {
    Plant editor;
    editor.trigger("miViewMessages");
    const auto* const panel = editor.window->findChild<MessagesPanel*>();
    editor.trigger("miViewPanels");
    QVERIFY(!panel->isVisible());
    editor.project.STDMSG[1] = editor.project.STDMSG[2];
    editor.window->lifecycle().SetModified(true);
    QCOMPARE(editor.message(1), QStringLiteral("STDMSG2||321|00322|0|||||"));
    editor.trigger("miViewPanels");
    QCOMPARE(editor.message(1), QStringLiteral("STDMSG2||321|00322|1||Level|||"));
}

void ItemPanelsTest::nothingIsReadUnderAModalDialog() {
    Plant editor;
    editor.trigger("miViewMessages");
    QDialog dialog(editor.window.get());
    dialog.setModal(true);
    dialog.show();
    editor.project.STDMSG[1] = editor.project.STDMSG[2];
    editor.window->lifecycle().SetModified(true);
    QCOMPARE(editor.message(1), QStringLiteral("STDMSG2||321|00322|0|||||"));
    dialog.hide();
    QTRY_VERIFY(editor.message(1).startsWith(QStringLiteral("STDMSG2||321|00322|1||Level|||")));
}

void ItemPanelsTest::longScriptsAreReadInBetween() {
    Plant editor;
    std::string longScript = editor.project.STDMSG[2];
    while (longScript.size() < 64 * 1024)
        longScript += "\r\n" + editor.project.STDMSG[0];
    editor.project.STDMSG.fill(longScript);
    editor.trigger("miViewMessages");
    QCOMPARE(editor.message(39), QStringLiteral("STDMSG40||359|00360||||||"));
    QVERIFY(editor.pictureOf(39) != editor.pictureOf(40)); // without having read it all
    QTRY_VERIFY(editor.message(39).contains(QStringLiteral("|Level|RegVar3|tank.bmp|")));
}

void ItemPanelsTest::aChangeKeepsTheSelection() {
    Plant editor;
    editor.trigger("miViewMessages");
    RowsTable& table = *editor.messageTable();
    table.setFocus();
    table.selectRow(1);
    QTest::keyClick(&table, Qt::Key_Down, Qt::ShiftModifier);
    QCOMPARE(table.selectedRows(), (std::vector<int>{1, 2}));
    editor.project.STDMSG[1] = editor.project.STDMSG[0];
    editor.window->lifecycle().SetModified(true);
    QCOMPARE(table.selectedRows(), (std::vector<int>{1, 2}));
}

void ItemPanelsTest::openingKeepsTheFocusOnThePage() {
    Plant editor;
    editor.showMessage("R1");
    auto* const box = editor.find<QPlainTextEdit>("txtMsg");
    box->setFocus();
    editor.trigger("miViewMessages");
    editor.trigger("miViewVariables");
    QCoreApplication::processEvents();
    QVERIFY(box->hasFocus());
}

void ItemPanelsTest::theEntriesAreThereWithoutAProject() {
    EditorFixture editor;
    editor.start();
    QVERIFY(editor.enabled("miViewMessages"));
    QVERIFY(editor.enabled("miViewVariables"));
    editor.trigger("miViewMessages");
    QVERIFY(!editor.find<RowsTable>("tblMessages")->isEnabled());
    QVERIFY(!editor.find<QLineEdit>("txtMessagesFilter")->isEnabled());
}

QTEST_MAIN(ItemPanelsTest)
#include "ItemPanelsTest.moc"
