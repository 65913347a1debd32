#include "tools/tour/TablesTour.h"

#include "tests/support/ModalDriver.h"
#include "widgets/DeviceTextEdit.h"
#include "widgets/RowsTable.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QSpinBox>
#include <QTableWidget>
#include <QTest>
#include <QTextCursor>

namespace orvista::tour {

namespace {

QString cell(const RowsTable& table, int row, int column) {
    return table.model()->index(row, column).data().toString();
}

constexpr int labelColumn = 1;
constexpr int textColumn = 6;
constexpr int firstNoteColumn = 2; ///< of the names

/// Pastes label, unit and comment of an item, as a spreadsheet copies them.
void paste(QTableWidget& table, const QString& item, const QString& cells) {
    QApplication::clipboard()->setText(cells);
    table.setCurrentCell(table.findItems(item, Qt::MatchExactly).constFirst()->row(), firstNoteColumn);
    QTest::keyClick(&table, Qt::Key_V, Qt::ControlModifier);
}

} // namespace

void TablesTour::namesItems() {
    stage_.inDialog("frmNames", [this](const Hands& dialog) {
        dialog.type("txtDisplayName", "Line 3, gate");
        dialog.find<QSpinBox>("spnDisplayColumns").setValue(128);
        auto& table = dialog.find<QTableWidget>("tblNames");
        paste(table, "STDMSG3", "ShowLevel\t\tUntil the tank is empty");
        paste(table, "ALTMSG1", "TankFull");
        paste(table, "CoilVar1", "PumpRuns");
        paste(table, "RegVar1", "TankLevel\tm\tLevel of tank 1");
        dialog.click("chkNamesUsed");
        stage_.show(dialog.window(), "names", "What items are called is noted beside the project.");
        dialog.click("btnOK");
    });
    stage_.hands().find<QAction>("miToolsNames").trigger();
    QVERIFY(testing::allModalsServed());
    QVERIFY(QFile::exists(stage_.projectFolder("station") + "/STATION.notes.json"));
}

void TablesTour::listsAllMessages() {
    const Hands hands = stage_.hands();
    hands.clickNode("trvSystem", "C4");
    hands.find<QAction>("miViewMessages").trigger();
    const auto& table = hands.find<RowsTable>("tblMessages");
    QCOMPARE(table.model()->rowCount(), 60);
    QCOMPARE(cell(table, 2, textColumn), "Level %5v %4v");
    QCOMPARE(cell(table, 2, labelColumn), "ShowLevel");
    stage_.show("messages-table", "All messages at a glance, each with what the display shows first.");
}

void TablesTour::findsAMessage() {
    const Hands hands = stage_.hands();
    hands.press(QStringLiteral("Ctrl+F"));
    auto& filter = hands.find<QLineEdit>("txtMessagesFilter");
    QTRY_VERIFY(filter.hasFocus());
    QTest::keyClicks(&filter, QStringLiteral("regvar1"));
    auto& table = hands.find<RowsTable>("tblMessages");
    QCOMPARE(table.model()->rowCount(), 1);
    stage_.show("message-found", "The filter looks into whole scripts: one message shows the variable.");
    QTest::keyClick(&filter, Qt::Key_Return);
    QTest::keyClick(&table, Qt::Key_C, Qt::ControlModifier);
    filter.clear();
}

void TablesTour::copiesAMessage() {
    const Hands hands = stage_.hands();
    auto& table = hands.find<RowsTable>("tblMessages");
    QTest::mouseClick(table.viewport(), Qt::LeftButton, {},
                      table.visualRect(table.model()->index(4, 0)).center());
    for (int row = 5; row < 8; ++row)
        QTest::keyClick(&table, Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(&table, Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(cell(table, 7, textColumn), "Level %5v %4v");
    QCOMPARE(hands.find<QAction>("miEditUndo").text(), "Undo Paste");
    stage_.show("rows-pasted", "One message was pasted onto four rows, which Undo takes back in one step.");
}

void TablesTour::replacesAText() {
    stage_.inDialog("frmReplace", [this](const Hands& dialog) {
        dialog.type("txtReplaceFind", "level");
        dialog.type("txtReplaceWith", "Depth");
        auto& table = dialog.find<RowsTable>("tblReplace");
        table.setFocus();
        table.selectRow(1);
        QTest::keyClick(&table, Qt::Key_Space);
        QCOMPARE(dialog.find<QLabel>("lblReplace").text(), "5 matches, 4 selected");
        stage_.show(dialog.window(), "replace", "Each place is shown old and new, and can be left out.");
        dialog.click("btnOK");
    });
    const Hands hands = stage_.hands();
    hands.find<QAction>("miEditReplace").trigger();
    const auto& table = hands.find<RowsTable>("tblMessages");
    QCOMPARE(cell(table, 2, textColumn), "Depth %5v %4v");
    QCOMPARE(cell(table, 4, textColumn), "Level %5v %4v");
}

void TablesTour::listsAllVariables() {
    const Hands hands = stage_.hands();
    hands.find<QAction>("miViewVariables").trigger();
    const auto& table = hands.find<RowsTable>("tblVariables");
    QCOMPARE(cell(table, 0, textColumn), "STDMSG3 STDMSG5 STDMSG6 STDMSG7 STDMSG8");
    stage_.show("variables-table", "All variables, and the messages that show them.");
}

void TablesTour::takesItAllBack() {
    const Hands hands = stage_.hands();
    hands.find<QAction>("miEditUndo").trigger();
    hands.find<QAction>("miEditUndo").trigger();
    QCOMPARE(hands.find<QAction>("miEditUndo").text(), "Undo");
    hands.find<QAction>("miViewMessages").trigger();
    const auto& table = hands.find<RowsTable>("tblMessages");
    QCOMPARE(cell(table, 2, textColumn), "Level %5v %4v");
    QCOMPARE(cell(table, 7, textColumn), "");
    hands.click("btnClosePanels");
    hands.press(QStringLiteral("Ctrl+S"));
    QTRY_COMPARE(stage_.window().windowTitle(), "Orvista Message Editor - [STATION]");
}

void TablesTour::handsTablesOver() {
    const Hands hands = stage_.hands();
    stage_.inDialog("frmAddressList", [this](const Hands& dialog) {
        dialog.type("txtAddressPrefix", "LINE3_");
        stage_.show(dialog.window(), "address-list", "What the address list is to hold, before its file.");
        dialog.click("btnOK");
    });
    stage_.answerWithFile(stage_.path("addresses.pdf"));
    hands.find<QAction>("miToolsExportAddresses").trigger();
    QVERIFY(QFile::exists(stage_.path("addresses.pdf")));
    stage_.inDialog("frmBook", [this](const Hands& dialog) {
        stage_.show(dialog.window(), "message-book", "What the message book is to hold, before its file.");
        dialog.click("btnOK");
    });
    stage_.answerWithFile(stage_.path("book.pdf"));
    hands.find<QAction>("miToolsBook").trigger();
    QVERIFY(QFile::remove(stage_.path("book.pdf")));
    QFile table(stage_.path("messages.csv"));
    QVERIFY(table.open(QIODevice::WriteOnly));
    table.write("message,script\r\nSTDMSG3,\"CLEAR\r\nSTILL 500\"\r\nSTDMSG9,STILL 700\r\n");
    table.close();
    stage_.answerWithFile(stage_.path("messages.csv"));
    stage_.inDialog("frmSheetImport", [this](const Hands& dialog) {
        stage_.show(dialog.window(), "import",
                    "A table is looked at, old and new, before anything is taken.");
        dialog.click("btnCancel");
    });
    hands.find<QAction>("miToolsImportMessages").trigger();
    QCOMPARE(hands.find<QAction>("miEditUndo").text(), "Undo");
    QVERIFY(QFile::remove(stage_.path("messages.csv")) && QFile::remove(stage_.path("addresses.pdf")));
}

void TablesTour::takesAnApplyBackByKey() {
    const Hands hands = stage_.hands();
    hands.clickNode("trvSystem", "C4");
    hands.clickNode("trvMsg", "R4");
    auto& box = hands.find<DeviceTextEdit>("txtMsg");
    const QString before = box.toPlainText();
    hands.type("txtMsg", "TEXT 0 0 RED BLACK \"Pump 4\"");
    hands.click("btnMsgApply");
    auto& tree = hands.find<QWidget>("trvMsg");
    hands.window().activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&hands.window()));
    tree.setFocus(); // in the box the keys would be the box's own
    QTest::keyClick(&tree, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(box.toPlainText(), before);
    auto& menu = hands.find<QMenu>("mnuEdit");
    menu.popup(stage_.window().mapToGlobal(QPoint(0, 0)));
    QTRY_VERIFY(menu.isVisible());
    stage_.show(menu, "undo-menu", "The menu Edit tells what can be made again.");
    menu.hide();
    QTest::keyClick(&tree, Qt::Key_Y, Qt::ControlModifier);
    QVERIFY(box.toPlainText().contains("Pump 4"));
    QCOMPARE(hands.find<QAction>("miEditUndo").text(), "Undo Apply STDMSG4");
    stage_.show("redone", "Ctrl+Z took the applied script back, Ctrl+Y made it again.");
    QTest::keyClick(&tree, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(hands.find<QAction>("miEditRedo").text(), "Redo Apply STDMSG4");
    stage_.show("undone", "Taken back once more: box and preview show the message as it was.");
    hands.press(QStringLiteral("Ctrl+S"));
    QTRY_COMPARE(stage_.window().windowTitle(), "Orvista Message Editor - [STATION]");
}

void TablesTour::showsAMaster() {
    const Hands hands = stage_.hands();
    QFile list(stage_.projectFolder("station") + "/displays.csv");
    QVERIFY(list.open(QIODevice::WriteOnly));
    list.write("name,address,line,tank\nLine 17,192.168.1.117,17,Nord\nLine 18,192.168.1.118,18,West\n");
    list.close();
    nameMasterList(list.fileName());
    hands.clickNode("trvMsg", "R30");
    auto& box = hands.find<DeviceTextEdit>("txtMsg");
    const QString before = box.toPlainText();
    QTextCursor cursor(box.document());
    cursor.select(QTextCursor::Document); // one step, to be taken back
    cursor.insertText("CLEAR\nTEXTS 0 0 GREEN BLACK \"Line {line:3}\"\n"
                      "TEXTS 0 8 ORANGE BLACK \"Tank {tank:6} full\"\nACT STILL 3000");
    hands.pick("cboPreviewDisplay", "Line 18");
    QTRY_COMPARE(box.extraSelections().size(), 2);
    stage_.show("master", "A master has places; the preview shows the values of one of its displays.");
    hands.pick("cboPreviewDisplay", "as typed");
    box.undo();
    QCOMPARE(box.toPlainText(), before);
    nameMasterList({});
    QVERIFY(list.remove());
}

void TablesTour::nameMasterList(const QString& path) {
    stage_.inDialog("frmNames", [&](const Hands& dialog) {
        if (path.isEmpty()) {
            dialog.find<QLineEdit>("txtMasterList").clear();
        } else {
            stage_.answerWithFile(path);
            dialog.click("btnMasterList");
        }
        dialog.click("btnOK");
    });
    stage_.hands().find<QAction>("miToolsNames").trigger();
    QVERIFY(testing::allModalsServed());
}

} // namespace orvista::tour
