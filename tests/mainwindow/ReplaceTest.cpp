#include "tests/support/EditorFixture.h"
#include "tests/support/ModalDriver.h"
#include "widgets/PanelView.h"
#include "widgets/RowsTable.h"

#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>

using namespace orvista;
using namespace orvista::testing;

namespace {

std::string messageWith(const std::string& text) {
    return "CLEAR\r\nTEXT 0 0 RED BLACK \"" + text + "\"\r\nACT STILL 1000";
}

struct Plant : EditorFixture {
    Plant() {
        startWithNewProject();
        project.STDMSG[0] = messageWith("Pump pump");
        project.STDMSG[4] = messageWith("Level");
        project.ALTMSG[2] = messageWith("pump stopped");
        trigger("miFileSave");
    }
    /// Opens the dialog and plays `act` in it.
    void replace(const std::function<void(QWidget&)>& act) const {
        onModal(QStringLiteral("frmReplace"), [&act](QWidget* dialog) { act(*dialog); });
        trigger("miEditReplace");
        QVERIFY(allModalsServed());
    }
    /// The same after "pump" was to become "Valve".
    void replacePump(const std::function<void(QWidget&)>& act) const;
    QString undoName() const { return find<QAction>("miEditUndo")->text(); }
};

template <typename Widget>
Widget& in(QWidget& dialog, const char* name) {
    auto* const widget = dialog.findChild<Widget*>(QString::fromLatin1(name));
    if (!widget)
        throw std::logic_error(std::string("no ") + name);
    return *widget;
}

void type(QWidget& dialog, const QString& wanted, const QString& with) {
    QTest::keyClicks(&in<QLineEdit>(dialog, "txtReplaceFind"), wanted);
    QTest::keyClick(&in<QLineEdit>(dialog, "txtReplaceFind"), Qt::Key_Tab);
    QTest::keyClicks(&in<QLineEdit>(dialog, "txtReplaceWith"), with);
}

void Plant::replacePump(const std::function<void(QWidget&)>& act) const {
    replace([&act](QWidget& dialog) {
        ::type(dialog, QStringLiteral("pump"), QStringLiteral("Valve"));
        act(dialog);
    });
}

QStringList rows(QWidget& dialog) {
    const auto& model = *in<RowsTable>(dialog, "tblReplace").model();
    QStringList lines;
    for (int row = 0; row < model.rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < model.columnCount(); ++column)
            cells << model.index(row, column).data().toString();
        const bool ticked = model.index(row, 0).data(Qt::CheckStateRole) == Qt::Checked;
        lines << (ticked ? u'+' : u'-') + cells.join(u'|');
    }
    return lines;
}

QString count(QWidget& dialog) {
    return in<QLabel>(dialog, "lblReplace").text();
}

void press(QWidget& dialog, const char* button) {
    auto& pressed = in<QPushButton>(dialog, button);
    pressed.setFocus();
    QTest::keyClick(&pressed, Qt::Key_Return);
}

void cancel(QWidget& dialog) {
    QTest::keyClick(&dialog, Qt::Key_Escape);
}

} // namespace

class ReplaceTest : public QObject {
    Q_OBJECT
private slots:
    void controlHOpensTheDialogWithTheCursorInItsFirstBox();
    void everyPlaceIsShownOldAndNew();
    void textsAloneAreTickedAtFirst();
    void replacingIsOneStep();
    void placesAreTickedOffByKeysAlone();
    void allAndNoneAreTicked();
    void caseIsMatchedWhenAskedFor();
    void escapeChangesNothing();
    void enterAfterTheWordGoesOnToTheOtherBox();
    void whatTheDisplayCannotShowIsRefused();
    void messagesThatAreNotAppliedAreNotTicked();
    void nothingFoundIsSaid();
    void thePageIsShownBeforeAndAfter();
    void theShownMessageIsShownAnew();
};

void ReplaceTest::thePageIsShownBeforeAndAfter() {
    Plant editor;
    editor.replacePump([](QWidget& dialog) {
        const auto& before = in<PanelView>(dialog, "panelBefore");
        const auto& after = in<PanelView>(dialog, "panelAfter");
        // The first place as soon as nobody types, any other at once.
        QTRY_COMPARE(after.accessibleDescription(), QStringLiteral("Valve pump"));
        QCOMPARE(before.accessibleDescription(), QStringLiteral("Pump pump"));
        auto& table = in<RowsTable>(dialog, "tblReplace");
        table.setCurrentIndex(table.model()->index(2, 0));
        QCOMPARE(before.accessibleDescription(), QStringLiteral("pump stopped"));
        QCOMPARE(after.accessibleDescription(), QStringLiteral("Valve stopped"));
        in<QLineEdit>(dialog, "txtReplaceFind").clear();
        QTRY_VERIFY(!before.isVisible());
        cancel(dialog);
    });
}

void ReplaceTest::controlHOpensTheDialogWithTheCursorInItsFirstBox() {
    Plant editor;
    onModal(QStringLiteral("frmReplace"), [](QWidget* dialog) {
        QCOMPARE(dialog->focusWidget()->objectName(), QStringLiteral("txtReplaceFind"));
        cancel(*dialog);
    });
    QTest::keyClick(editor.window.get(), Qt::Key_H, Qt::ControlModifier);
    QVERIFY(allModalsServed());
}

void ReplaceTest::everyPlaceIsShownOldAndNew() {
    Plant editor;
    editor.replacePump([](QWidget& dialog) {
        QCOMPARE(
            rows(dialog),
            (QStringList{
                "+STDMSG1|2|text|TEXT 0 0 RED BLACK \"Pump pump\"|TEXT 0 0 RED BLACK \"Valve pump\"",
                "+STDMSG1|2|text|TEXT 0 0 RED BLACK \"Pump pump\"|TEXT 0 0 RED BLACK \"Pump Valve\"",
                "+ALTMSG3|2|text|TEXT 0 0 RED BLACK \"pump stopped\"|TEXT 0 0 RED BLACK \"Valve stopped\""}));
        QCOMPARE(count(dialog), QStringLiteral("3 matches, 3 selected"));
        cancel(dialog);
    });
}

void ReplaceTest::textsAloneAreTickedAtFirst() {
    Plant editor;
    editor.project.STDMSG[0] =
        "CLEAR\r\nIMG 0 0 RED BLACK pump.bmp\r\nTEXT 0 0 RED BLACK \"Pump\"\r\npump it";
    editor.project.ALTMSG[2] = "CLEAR";
    editor.replacePump([](QWidget& dialog) {
        QCOMPARE(rows(dialog),
                 (QStringList{"-STDMSG1|2|bitmap|IMG 0 0 RED BLACK pump.bmp|IMG 0 0 RED BLACK Valve.bmp",
                              "+STDMSG1|3|text|TEXT 0 0 RED BLACK \"Pump\"|TEXT 0 0 RED BLACK \"Valve\"",
                              "-STDMSG1|4|other|pump it|Valve it"}));
        press(dialog, "btnReplaceTickAll");
        QCOMPARE(count(dialog), QStringLiteral("3 matches, 3 selected"));
        press(dialog, "btnOK");
    });
    QCOMPARE(editor.project.STDMSG[0],
             std::string("CLEAR\r\nIMG 0 0 RED BLACK Valve.bmp\r\nTEXT 0 0 RED BLACK \"Valve\"\r\nValve it"));
}

void ReplaceTest::replacingIsOneStep() {
    Plant editor;
    editor.replacePump(
        [](QWidget& dialog) { QTest::keyClick(&in<QLineEdit>(dialog, "txtReplaceWith"), Qt::Key_Return); });
    QCOMPARE(editor.project.STDMSG[0], messageWith("Valve Valve"));
    QCOMPARE(editor.project.ALTMSG[2], messageWith("Valve stopped"));
    QCOMPARE(editor.project.STDMSG[4], messageWith("Level"));
    QVERIFY(editor.project.modified);
    QCOMPARE(editor.undoName(), QStringLiteral("Undo Replace"));
    editor.trigger("miEditUndo");
    QCOMPARE(editor.project.STDMSG[0], messageWith("Pump pump"));
    QCOMPARE(editor.project.ALTMSG[2], messageWith("pump stopped"));
}

void ReplaceTest::placesAreTickedOffByKeysAlone() {
    Plant editor;
    editor.replacePump([](QWidget& dialog) {
        auto& table = in<RowsTable>(dialog, "tblReplace");
        table.setFocus();
        QTest::keyClick(&table, Qt::Key_Down);
        QTest::keyClick(&table, Qt::Key_Space);
        QCOMPARE(count(dialog), QStringLiteral("3 matches, 2 selected"));
        QTest::keyClick(&table, Qt::Key_Down, Qt::ShiftModifier);
        QTest::keyClick(&table, Qt::Key_Space); // one of the two was ticked: both are now
        QCOMPARE(count(dialog), QStringLiteral("3 matches, 3 selected"));
        QTest::keyClick(&table, Qt::Key_Space);
        QCOMPARE(count(dialog), QStringLiteral("3 matches, 1 selected"));
        QTest::keyClick(&table, Qt::Key_Return);
    });
    QCOMPARE(editor.project.STDMSG[0], messageWith("Pump pump"));
    QCOMPARE(editor.project.ALTMSG[2], messageWith("Valve stopped"));
}

void ReplaceTest::allAndNoneAreTicked() {
    Plant editor;
    editor.replacePump([](QWidget& dialog) {
        press(dialog, "btnReplaceTickNone");
        QCOMPARE(count(dialog), QStringLiteral("3 matches, 0 selected"));
        QVERIFY(!in<QPushButton>(dialog, "btnOK").isEnabled());
        press(dialog, "btnReplaceTickAll");
        QCOMPARE(count(dialog), QStringLiteral("3 matches, 3 selected"));
        QVERIFY(in<QPushButton>(dialog, "btnOK").isEnabled());
        cancel(dialog);
    });
}

void ReplaceTest::caseIsMatchedWhenAskedFor() {
    Plant editor;
    editor.replace([](QWidget& dialog) {
        type(dialog, QStringLiteral("Pump"), QStringLiteral("Valve"));
        QTest::keyClick(&in<QCheckBox>(dialog, "chkReplaceCase"), Qt::Key_Space);
        QCOMPARE(count(dialog), QStringLiteral("1 match, 1 selected"));
        cancel(dialog);
    });
}

void ReplaceTest::escapeChangesNothing() {
    Plant editor;
    editor.replacePump([](QWidget& dialog) { cancel(dialog); });
    QCOMPARE(editor.project.STDMSG[0], messageWith("Pump pump"));
    QVERIFY(!editor.project.modified);
    QCOMPARE(editor.undoName(), QStringLiteral("Undo"));
}

void ReplaceTest::enterAfterTheWordGoesOnToTheOtherBox() {
    Plant editor;
    editor.replace([](QWidget& dialog) {
        auto& wanted = in<QLineEdit>(dialog, "txtReplaceFind");
        QTest::keyClicks(&wanted, QStringLiteral("pump"));
        QTest::keyClick(&wanted, Qt::Key_Return);
        QVERIFY(dialog.isVisible());
        QCOMPARE(dialog.focusWidget()->objectName(), QStringLiteral("txtReplaceWith"));
        cancel(dialog);
    });
}

void ReplaceTest::whatTheDisplayCannotShowIsRefused() {
    Plant editor;
    editor.replace([](QWidget& dialog) {
        for (const char* name : {"txtReplaceFind", "txtReplaceWith"}) {
            auto& box = in<QLineEdit>(dialog, name);
            box.insert(QStringLiteral("\u03A9"));
            QCOMPARE(box.text(), QString());
            box.insert(QStringLiteral("\u00FC"));
            QCOMPARE(box.text(), QStringLiteral("\u00FC"));
        }
        cancel(dialog);
    });
}

void ReplaceTest::messagesThatAreNotAppliedAreNotTicked() {
    Plant editor;
    editor.showMessage("R1");
    QTest::keyClicks(editor.find<QPlainTextEdit>("txtMsg"), QStringLiteral("x"));
    editor.replacePump([](QWidget& dialog) {
        QCOMPARE(count(dialog), QStringLiteral("3 matches, 1 selected"));
        QVERIFY(rows(dialog).first().startsWith(QStringLiteral("-STDMSG1")));
        QVERIFY(rows(dialog).first().endsWith(QStringLiteral(" (not applied)")));
        press(dialog, "btnOK");
    });
    QCOMPARE(editor.project.ALTMSG[2], messageWith("Valve stopped"));
    QCOMPARE(editor.project.STDMSG[0], messageWith("Pump pump"));
    // Ticked all the same, the whole step is refused.
    editor.replacePump([](QWidget& dialog) {
        auto& table = in<RowsTable>(dialog, "tblReplace");
        table.setFocus();
        QTest::keyClick(&table, Qt::Key_Down);
        QTest::keyClick(&table, Qt::Key_Space);
        press(dialog, "btnOK");
    });
    QCOMPARE(editor.project.STDMSG[0], messageWith("Pump pump"));
    QCOMPARE(editor.notice(), QStringLiteral("Not done: apply or discard the edit of STDMSG1 first."));
}

void ReplaceTest::nothingFoundIsSaid() {
    Plant editor;
    editor.replace([](QWidget& dialog) {
        QCOMPARE(count(dialog), QString());
        type(dialog, QStringLiteral("motor"), QString());
        QCOMPARE(count(dialog), QStringLiteral("Not found"));
        QVERIFY(!in<QPushButton>(dialog, "btnOK").isEnabled());
        cancel(dialog);
    });
}

void ReplaceTest::theShownMessageIsShownAnew() {
    Plant editor;
    editor.showMessage("E3");
    editor.replace([](QWidget& dialog) {
        type(dialog, QStringLiteral("stopped"), QStringLiteral("runs"));
        press(dialog, "btnOK");
    });
    QVERIFY(editor.find<QPlainTextEdit>("txtMsg")->toPlainText().contains(QStringLiteral("pump runs")));
    QVERIFY(!editor.find<QWidget>("btnMsgApply")->isEnabled());
}

QTEST_MAIN(ReplaceTest)
#include "ReplaceTest.moc"
