#include "tests/support/EditorFixture.h"
#include "widgets/RowsTable.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QDialog>
#include <QMenu>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QTabWidget>

using namespace orvista;
using namespace orvista::testing;

namespace {

const std::string pump = "CLEAR\r\nTEXT 0 0 GREEN BLACK \"Pump\"\r\nACT STILL 1000";
const std::string level = "CLEAR\r\nTEXT 0 0 RED BLACK \"Level\"\r\nACT STILL 1000";
const QString itemsType = QStringLiteral("application/x-orvista-items");

struct Plant : EditorFixture {
    Plant() {
        startWithNewProject();
        project.STDMSG[0] = pump;
        project.STDMSG[1] = level;
        project.RegVar[0] = {"RegVar1", "1.5", "6", "2"};
        trigger("miFileSave");
        QGuiApplication::clipboard()->clear();
    }
    RowsTable* open(const char* entry, const char* name) const {
        trigger(entry);
        auto* const table = find<RowsTable>(name);
        table->setFocus();
        return table;
    }
    RowsTable* messageTable() const { return open("miViewMessages", "tblMessages"); }
    RowsTable* variableTable() const { return open("miViewVariables", "tblVariables"); }
    QString undoName() const { return find<QAction>("miEditUndo")->text(); }
};

/// Selects rows by keys alone.
void select(RowsTable& table, int row, int count = 1) {
    QTest::keyClick(&table, Qt::Key_Home, Qt::ControlModifier);
    QTest::keyClick(&table, Qt::Key_Down); // Ctrl+Home goes there without selecting
    QTest::keyClick(&table, Qt::Key_Up);
    for (int i = 0; i < row; ++i)
        QTest::keyClick(&table, Qt::Key_Down);
    for (int i = 1; i < count; ++i)
        QTest::keyClick(&table, Qt::Key_Down, Qt::ShiftModifier);
}

void control(QWidget& widget, Qt::Key key) {
    QTest::keyClick(&widget, key, Qt::ControlModifier);
}

QByteArray copiedBytesOnClipboard() {
    return QGuiApplication::clipboard()->mimeData()->data(itemsType);
}

} // namespace

class ItemCommandsTest : public QObject {
    Q_OBJECT
private slots:
    void theEntriesStandInTheMenuEdit();
    void copyFillsTheClipboardTwice();
    void copyAndPasteByKeysAlone();
    void pasteIsOneStepThatCanBeUndone();
    void oneRowFillsTheSelection();
    void pasteFollowsTheRowsAsTheyAreShown();
    void cutIsCopyAndClear();
    void clearMakesRowsNewAndCanBeUndone();
    void variablesAreCopiedToo();
    void whatIsNotOursChangesNothingAndSaysSo();
    void aNewerFormIsNamed();
    void whatDoesNotFitChangesNothingAndSaysSo();
    void theLineGoesAwayWithTheRow();
    void anEditThatIsNotAppliedIsNotOverwritten();
    void theShownMessageIsShownAnew();
    void aTextBoxKeepsItsKeys();
    void theMenuWorksOnTheRowsWhileTheScriptBoxHasTheFocus();
    void withoutRowsTheMenuSaysSo();
    void rowsOutOfSightAreShownBeforeAnythingIsDone();
    void theContextMenuOffersTheFour();
    void nothingHappensUnderAModalDialog();
    void pastingIntoAnotherProjectWorks();
    void pastingTheSameChangesNothing();
};

void ItemCommandsTest::theEntriesStandInTheMenuEdit() {
    EditorFixture editor;
    editor.start();
    for (const char* entry : {"miEditCut", "miEditCopy", "miEditPaste", "miEditClear"})
        QVERIFY(!editor.enabled(entry));
    editor.newProject("Line3");
    for (const char* entry : {"miEditCut", "miEditCopy", "miEditPaste", "miEditClear"})
        QVERIFY(editor.enabled(entry));
    QStringList captions;
    for (const QAction* action : editor.find<QMenu>("mnuEdit")->actions())
        captions << (action->isSeparator() ? QStringLiteral("-") : action->text());
    QCOMPARE(captions.mid(0, 9), (QStringList{"Undo", "Redo", "-", "Cu&t", "&Copy", "&Paste", "Cl&ear", "-",
                                              "&Replace in Messages\u2026"}));
    QCOMPARE(editor.find<QAction>("miEditPaste")->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_V));
}

void ItemCommandsTest::copyFillsTheClipboardTwice() {
    Plant editor;
    RowsTable& table = *editor.messageTable();
    select(table, 0, 2);
    control(table, Qt::Key_C);
    QVERIFY(copiedBytesOnClipboard().startsWith("orvista-items 1\n"));
    QVERIFY(copiedBytesOnClipboard().contains("Pump"));
    const QStringList lines = QGuiApplication::clipboard()->text().split(QStringLiteral("\r\n"));
    QCOMPARE(lines.first(),
             QStringLiteral("name\taddress\treference\tpages\ttext\tvariables\tbitmaps\tscript"));
    QVERIFY(lines.at(1).startsWith(QStringLiteral("STDMSG1\t320\t00321\t1\tPump\t\t\t\"CLEAR")));
    QVERIFY(!editor.project.modified);
}

void ItemCommandsTest::copyAndPasteByKeysAlone() {
    Plant editor;
    RowsTable& table = *editor.messageTable();
    select(table, 0, 2);
    control(table, Qt::Key_C);
    select(table, 38);
    control(table, Qt::Key_V);
    QCOMPARE(editor.project.STDMSG[38], pump);
    QCOMPARE(editor.project.STDMSG[39], level);
    QCOMPARE(editor.project.STDMSG[0], pump);
    QCOMPARE(editor.project.ALTMSG[0], std::string("CLEAR"));
    QVERIFY(editor.project.modified);
    QCOMPARE(table.model()->index(38, 6).data().toString(), QStringLiteral("Pump"));
    QCOMPARE(table.selectedRows(), std::vector<int>{38});
}

void ItemCommandsTest::pasteIsOneStepThatCanBeUndone() {
    Plant editor;
    RowsTable& table = *editor.messageTable();
    select(table, 0, 2);
    control(table, Qt::Key_C);
    select(table, 2);
    control(table, Qt::Key_V);
    QCOMPARE(editor.undoName(), QStringLiteral("Undo Paste"));
    control(table, Qt::Key_Z);
    QCOMPARE(editor.project.STDMSG[2], std::string("CLEAR"));
    QCOMPARE(editor.project.STDMSG[3], std::string("CLEAR"));
    control(table, Qt::Key_Y);
    QCOMPARE(editor.project.STDMSG[3], level);
}

void ItemCommandsTest::oneRowFillsTheSelection() {
    Plant editor;
    RowsTable& table = *editor.messageTable();
    select(table, 1);
    control(table, Qt::Key_C);
    select(table, 4, 3);
    control(table, Qt::Key_V);
    for (const std::size_t message : {4U, 5U, 6U})
        QCOMPARE(editor.project.STDMSG[message], level);
    QCOMPARE(editor.project.STDMSG[7], std::string("CLEAR"));
}

void ItemCommandsTest::pasteFollowsTheRowsAsTheyAreShown() {
    Plant editor;
    editor.project.ALTMSG[6] = "CLEAR\r\nTEXT 0 0 RED BLACK \"Pump 7\"\r\nACT STILL 1000";
    RowsTable& table = *editor.messageTable();
    select(table, 1);
    control(table, Qt::Key_C);
    editor.type("txtMessagesFilter", QStringLiteral("pump"));
    table.setFocus();
    table.selectAll();
    control(table, Qt::Key_V);
    QCOMPARE(editor.project.STDMSG[0], level);
    QCOMPARE(editor.project.ALTMSG[6], level);
    QCOMPARE(editor.project.STDMSG[2], std::string("CLEAR"));
}

void ItemCommandsTest::cutIsCopyAndClear() {
    Plant editor;
    RowsTable& table = *editor.messageTable();
    select(table, 0);
    control(table, Qt::Key_X);
    QCOMPARE(editor.project.STDMSG[0], std::string("CLEAR"));
    QCOMPARE(editor.undoName(), QStringLiteral("Undo Clear"));
    select(table, 45);
    control(table, Qt::Key_V);
    QCOMPARE(editor.project.ALTMSG[5], pump);
}

void ItemCommandsTest::clearMakesRowsNewAndCanBeUndone() {
    Plant editor;
    RowsTable& table = *editor.messageTable();
    select(table, 0, 2);
    QTest::keyClick(&table, Qt::Key_Delete);
    QCOMPARE(editor.project.STDMSG[0], std::string("CLEAR"));
    QCOMPARE(editor.project.STDMSG[1], std::string("CLEAR"));
    QCOMPARE(editor.undoName(), QStringLiteral("Undo Clear"));
    editor.trigger("miEditUndo");
    QCOMPARE(editor.project.STDMSG[1], level);
}

void ItemCommandsTest::variablesAreCopiedToo() {
    Plant editor;
    RowsTable& table = *editor.variableTable();
    select(table, 0);
    control(table, Qt::Key_C);
    select(table, 63);
    control(table, Qt::Key_V);
    QCOMPARE(editor.project.RegVar[63], (FloatVariable{"RegVar64", "1.5", "6", "2"}));
    select(table, 0);
    QTest::keyClick(&table, Qt::Key_Delete);
    QCOMPARE(editor.project.RegVar[0], (FloatVariable{"RegVar1", "0.0", "7", "3"}));
}

void ItemCommandsTest::whatIsNotOursChangesNothingAndSaysSo() {
    Plant editor;
    RowsTable& table = *editor.messageTable();
    QGuiApplication::clipboard()->setText(QStringLiteral("STDMSG1\tCLEAR"));
    select(table, 3);
    control(table, Qt::Key_V);
    QCOMPARE(editor.notice(),
             QStringLiteral("The clipboard holds no rows of Messages or Variables: nothing was pasted"));
    auto* const rubbish = new QMimeData;
    rubbish->setData(itemsType, "orvista-items 1\n9:cut");
    QGuiApplication::clipboard()->setMimeData(rubbish);
    control(table, Qt::Key_V);
    QCOMPARE(editor.notice(),
             QStringLiteral("The clipboard holds no rows of Messages or Variables: nothing was pasted"));
    QVERIFY(!editor.project.modified);
    QCOMPARE(editor.undoName(), QStringLiteral("Undo"));
}

void ItemCommandsTest::aNewerFormIsNamed() {
    Plant editor;
    RowsTable& table = *editor.messageTable();
    auto* const newer = new QMimeData;
    newer->setData(itemsType, "orvista-items 2\n");
    QGuiApplication::clipboard()->setMimeData(newer);
    select(table, 3);
    control(table, Qt::Key_V);
    QCOMPARE(editor.notice(),
             QStringLiteral("This was copied in a newer version of the program: nothing was pasted"));
}

void ItemCommandsTest::whatDoesNotFitChangesNothingAndSaysSo() {
    Plant editor;
    RowsTable& table = *editor.messageTable();
    select(table, 0, 2);
    control(table, Qt::Key_C);
    select(table, 59);
    control(table, Qt::Key_V);
    QCOMPARE(editor.notice(),
             QStringLiteral("2 rows were copied; there is room for 1 from ALTMSG20 on: nothing was pasted"));
    RowsTable& variables = *editor.variableTable();
    select(variables, 0);
    control(variables, Qt::Key_V);
    QCOMPARE(
        editor.notice(),
        QStringLiteral("Messages were copied; they cannot be pasted onto variables. Nothing was pasted"));
    QVERIFY(!editor.project.modified);
}

void ItemCommandsTest::theLineGoesAwayWithTheRow() {
    Plant editor;
    RowsTable& table = *editor.messageTable();
    select(table, 3);
    control(table, Qt::Key_V);
    QVERIFY(!editor.notice().isEmpty());
    QTest::keyClick(&table, Qt::Key_Down);
    QCOMPARE(editor.notice(), QString());
}

void ItemCommandsTest::anEditThatIsNotAppliedIsNotOverwritten() {
    Plant editor;
    editor.showMessage("R4");
    QTest::keyClicks(editor.find<QPlainTextEdit>("txtMsg"), QStringLiteral("x"));
    RowsTable& table = *editor.messageTable();
    select(table, 0);
    control(table, Qt::Key_C);
    const QByteArray copied = copiedBytesOnClipboard();
    select(table, 2, 2);
    control(table, Qt::Key_V);
    QCOMPARE(editor.notice(), QStringLiteral("Not done: apply or discard the edit of STDMSG4 first."));
    QCOMPARE(editor.project.STDMSG[2], std::string("CLEAR"));
    select(table, 3);
    control(table, Qt::Key_X);
    QCOMPARE(editor.notice(), QStringLiteral("Not done: apply or discard the edit of STDMSG4 first."));
    QCOMPARE(copiedBytesOnClipboard(), copied); // nothing was cut
    QVERIFY(!editor.project.modified);
}

void ItemCommandsTest::theShownMessageIsShownAnew() {
    Plant editor;
    editor.showMessage("R4");
    RowsTable& table = *editor.messageTable();
    select(table, 0);
    control(table, Qt::Key_C);
    select(table, 3);
    control(table, Qt::Key_V);
    QVERIFY(editor.find<QPlainTextEdit>("txtMsg")->toPlainText().contains(QStringLiteral("Pump")));
    QVERIFY(!editor.find<QWidget>("btnMsgApply")->isEnabled());
}

void ItemCommandsTest::aTextBoxKeepsItsKeys() {
    Plant editor;
    editor.showMessage("R2");
    RowsTable& table = *editor.messageTable();
    select(table, 0);
    control(table, Qt::Key_C);
    auto* const box = editor.find<QPlainTextEdit>("txtMsg");
    box->setFocus();
    box->selectAll();
    control(*box, Qt::Key_C);
    QVERIFY(!QGuiApplication::clipboard()->mimeData()->hasFormat(itemsType));
    QTest::keyClick(box, Qt::Key_Delete);
    QCOMPARE(box->toPlainText(), QString());
    control(*box, Qt::Key_V);
    QCOMPARE(box->toPlainText().section(u'\n', 0, 0), QStringLiteral("CLEAR"));
    auto* const filter = editor.find<QLineEdit>("txtMessagesFilter");
    filter->setFocus();
    QTest::keyClicks(filter, QStringLiteral("ab"));
    filter->selectAll();
    control(*filter, Qt::Key_X);
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("ab"));
    QTest::keyClick(filter, Qt::Key_Delete);
    QCOMPARE(editor.project.STDMSG[0], pump);
    // A box that is only shown, and the tree, are no tables either.
    for (const char* name : {"txtMsgName", "trvMsg"}) {
        auto* const other = editor.find<QWidget>(name);
        other->setFocus();
        QTest::keyClick(other, Qt::Key_Delete);
        control(*other, Qt::Key_X);
    }
    QCOMPARE(editor.project.STDMSG[0], pump);
    QVERIFY(!editor.project.modified);
}

void ItemCommandsTest::theMenuWorksOnTheRowsWhileTheScriptBoxHasTheFocus() {
    Plant editor;
    editor.showMessage("R9");
    RowsTable& table = *editor.messageTable();
    select(table, 0);
    editor.find<QPlainTextEdit>("txtMsg")->setFocus();
    editor.trigger("miEditCopy");
    QVERIFY(QGuiApplication::clipboard()->mimeData()->hasFormat(itemsType));
    editor.trigger("miEditClear");
    QCOMPARE(editor.project.STDMSG[0], std::string("CLEAR"));
}

void ItemCommandsTest::withoutRowsTheMenuSaysSo() {
    Plant editor;
    editor.trigger("miEditCopy");
    QVERIFY(editor.find<RowsTable>("tblMessages")->isVisible());
    QCOMPARE(editor.notice(), QStringLiteral("Select the rows first"));
    QVERIFY(QGuiApplication::clipboard()->text().isEmpty());
}

void ItemCommandsTest::rowsOutOfSightAreShownBeforeAnythingIsDone() {
    Plant editor;
    RowsTable& table = *editor.messageTable();
    select(table, 1);
    control(table, Qt::Key_C);
    select(table, 0);
    // The panels are hidden, or another one is in front.
    for (const char* cover : {"miViewPanels", "miToolsCheck"}) {
        for (const char* command : {"miEditClear", "miEditCut", "miEditPaste"}) {
            editor.trigger(cover);
            QVERIFY(!table.isVisible());
            editor.trigger(command);
            QVERIFY(table.isVisible());
            QCOMPARE(editor.notice(), QStringLiteral("Select the rows first"));
            QCOMPARE(editor.project.STDMSG[0], pump);
        }
    }
    editor.trigger("miEditClear");
    QCOMPARE(editor.project.STDMSG[0], std::string("CLEAR"));
}

void ItemCommandsTest::theContextMenuOffersTheFour() {
    Plant editor;
    for (const RowsTable* table : {editor.messageTable(), editor.variableTable()}) {
        QCOMPARE(table->contextMenuPolicy(), Qt::ActionsContextMenu);
        QStringList names;
        for (const QAction* action : table->actions())
            names << action->objectName();
        QCOMPARE(names, (QStringList{"miEditCut", "miEditCopy", "miEditPaste", "miEditClear"}));
    }
}

void ItemCommandsTest::nothingHappensUnderAModalDialog() {
    Plant editor;
    RowsTable& table = *editor.messageTable();
    select(table, 0);
    QDialog dialog(editor.window.get());
    dialog.setModal(true);
    dialog.show();
    editor.trigger("miEditClear");
    QCOMPARE(editor.project.STDMSG[0], pump);
}

void ItemCommandsTest::pastingIntoAnotherProjectWorks() {
    Plant editor;
    RowsTable& table = *editor.messageTable();
    select(table, 0);
    control(table, Qt::Key_C);
    editor.newProject("Other");
    QCOMPARE(editor.project.STDMSG[0], std::string("CLEAR"));
    select(table, 7);
    control(table, Qt::Key_V);
    QCOMPARE(editor.project.STDMSG[7], pump);
}

void ItemCommandsTest::pastingTheSameChangesNothing() {
    Plant editor;
    RowsTable& table = *editor.messageTable();
    select(table, 0);
    control(table, Qt::Key_C);
    control(table, Qt::Key_V);
    QVERIFY(!editor.project.modified);
    QCOMPARE(editor.undoName(), QStringLiteral("Undo"));
}

QTEST_MAIN(ItemCommandsTest)
#include "ItemCommandsTest.moc"
