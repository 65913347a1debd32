#include "tools/tour/EditingTour.h"

#include "tests/support/ModalDriver.h"
#include "widgets/DeviceTextEdit.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QMenu>
#include <QSlider>
#include <QTableView>
#include <QTest>
#include <QTimer>

#include <utility>

namespace orvista::tour {

namespace {

QString shownScript(const Hands& hands) {
    return hands.find<DeviceTextEdit>("txtMsg").toPlainText();
}

const QString levelScript = "CLEAR\n"
                            "TEXT 0 0 GREEN BLACK \"Level           \"\n"
                            "DISPVAR 48 0 ORANGE BLACK RegVar1\n"
                            "DISPVAR 96 0 RED BLACK CoilVar1\n"
                            "IN GO-LEFT 1 50\n"
                            "ACT STILL 3000\n"
                            "OUT GO-UP 1 100";

/// What a user may type who does not know the display by heart, line by line.
const QStringList faultyScript = {"CLEAR",
                                  "TEXT 0 0 GREEN BLACK \"Emergency stop pump\"",
                                  "ACT STILL 3000",
                                  "CLEAR",
                                  "IMG 0 0 RED BLACK pump.bmp",
                                  "TEXT 48 0 BLACK BLACK \"Pump\"",
                                  "ACT STIL 3000"};

} // namespace

void EditingTour::startsAnotherProject() {
    stage_.inDialog("frmNewProject", [this](const Hands& dialog) {
        dialog.type("txtProjName", "STATION");
        dialog.type("txtLocation", folder());
        dialog.click("btnOK");
    });
    const Hands hands = stage_.hands();
    hands.press(QStringLiteral("Ctrl+N"));
    QTRY_COMPARE(stage_.window().windowTitle(), "Orvista Message Editor - [STATION*]");
    hands.clickNode("trvSystem", "C1");
    hands.type("txtSystemIP", "127.0.0.1");
    QVERIFY(QFile::copy(bitmap_, folder() + "/alarm.bmp"));
}

void EditingTour::composesAPageWithTwoFields() {
    const Hands hands = stage_.hands();
    hands.clickNode("trvSystem", "C4");
    hands.clickNode("trvMsg", "R3");
    stage_.inDialog("frmMessageEdit", [this](const Hands& wizard) {
        wizard.type("txtText", "Level %5v %4v high");
        wizard.pick("cbFgClr", "GREEN");
        wizard.pick("cbVar(0)", "RegVar1");
        wizard.pick("cbVarFgClr(0)", "ORANGE");
        wizard.pick("cbVar(1)", "CoilVar1");
        wizard.pick("cbDelay", " 3");
        wizard.pick("cbOutEffect", "GO-UP");
        wizard.pick("cbOFSpeed", "Low");
        QCOMPARE(wizard.find<QLabel>("lblWizardFit").text(),
                 "4 characters do not fit; RegVar1 is 7 wide, its place 5: write %7v");
        stage_.show(wizard.window(), "wizard-misfit", "The strip tells what will not fit.");
        wizard.type("txtText", "Level %5v %4v");
        stage_.show(wizard.window(), "wizard-text", "The wizard composes a page with two live fields.");
        wizard.click("btnOK");
    });
    hands.click("btnEditMessage");
    QCOMPARE(shownScript(hands), levelScript);
    stage_.show("message-with-fields", "The page is in the script box; Apply is enabled.");
    hands.click("btnMsgApply");
    QVERIFY(!hands.isEnabled("btnMsgApply"));
}

void EditingTour::looksAtThePreview() {
    const Hands hands = stage_.hands();
    hands.clickNode("trvMsg", "R3");
    QCOMPARE(hands.find<QLabel>("lblPreviewPage").text(), "1 of 1");
    stage_.show("preview", "Under the script stands the page as the display will show it.");
    hands.click("btnPreviewPlay");
    auto& time = hands.find<QSlider>("sldPreviewTime");
    QTRY_VERIFY(time.value() > 0);
    hands.click("btnPreviewPlay");
    time.setValue(3200);
    stage_.show("preview-enters", "Any moment can be looked at: here the page is entering.");
    hands.pick("cboPreviewValues", "Widest");
    time.setValue(6400);
    stage_.show("preview-widest", "The longest number that the field shows, before it comes in the plant.");
    stage_.inDialog("frmValues", [this](const Hands& values) {
        values.type("txtValueRegVar1", "-99.5");
        stage_.show(values.window(), "own-values", "Any other value can be tried, too.");
        values.click("btnOK");
    });
    hands.pick("cboPreviewValues", "Own\u2026");
    hands.pick("cboPreviewValues", "Defaults");
}

void EditingTour::composesAPageWithABitmap() {
    const Hands hands = stage_.hands();
    hands.clickNode("trvMsg", "E1");
    stage_.inDialog("frmMessageEdit", [this](const Hands& wizard) {
        wizard.click("OptMsgType(1)");
        stage_.inDialog("comdlg", [](const Hands& files) {
            files.type("fileNameEdit", "alarm.bmp");
            files.acceptFile();
        });
        wizard.click("cmdBrowse");
        wizard.pick("cbInEffect", "NONE");
        wizard.pick("cbSpEffect", "BLINK");
        wizard.pick("cbOutEffect", "NONE");
        stage_.show(wizard.window(), "wizard-bitmap", "A page can show a bitmap of the project folder.");
        wizard.click("btnOK");
    });
    hands.click("btnEditMessage");
    QCOMPARE(shownScript(hands), "CLEAR\nIMG 0 0 RED BLACK alarm.bmp\nACT BLINK 4 75\nACT STILL 500");
    stage_.show("message-with-bitmap", "Emergency message 1 blinks the bitmap.");
    hands.click("btnMsgApply");
}

void EditingTour::checksTheProject() {
    const Hands hands = stage_.hands();
    hands.clickNode("trvMsg", "R5");
    hands.typeLines("txtMsg", faultyScript);
    hands.click("btnMsgApply");
    hands.press(QStringLiteral("F8"));
    const auto& summary = hands.find<QLabel>("lblFindings");
    QCOMPARE(summary.text(), "2 errors, 3 warnings");
    auto& findings = hands.find<QTableView>("tblFindings");
    const auto& box = hands.find<DeviceTextEdit>("txtMsg");
    // The dock takes its room little by little, and has not enough for all rows on a small screen.
    int height = 0;
    const auto isSettled = [&] {
        return std::exchange(height, findings.viewport()->height()) == findings.viewport()->height();
    };
    // Apply set the text anew, and emptied the lines under the earlier one.
    const auto isUnderlined = [&] {
        return !box.extraSelections().isEmpty() && box.extraSelections().front().cursor.hasSelection();
    };
    QTRY_VERIFY(isSettled() && height > 0 && isUnderlined());
    stage_.show("findings", "Check Project lists what will go wrong on the display.");
    findings.selectRow(0);
    QTest::keyClick(&findings, Qt::Key_Return);
    QCOMPARE(hands.text("txtMsgName"), "STDMSG3");
    QTRY_VERIFY(box.extraSelections().size() == 1);
    stage_.show("finding-line", "Enter on a row leads to its line: the variable is wider than its place.");
    offersFixes();
    hands.clickNode("trvMsg", "R5");
    hands.type("txtMsg", "CLEAR");
    hands.click("btnMsgApply");
    QTRY_COMPARE(summary.text(), "1 warning");
}

void EditingTour::offersFixes() {
    auto& findings = stage_.hands().find<QTableView>("tblFindings");
    stage_.inDialog("frmFixes", [this](const Hands& dialog) {
        QCOMPARE(dialog.find<QLabel>("lblFixes").text(), "3 fixes, 2 ticked");
        stage_.show(dialog.window(), "fixes",
                    "Fix All shows what would mend the findings, to be ticked off.");
        dialog.click("btnCancel");
    });
    QTimer::singleShot(0, &findings, [] {
        auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        QVERIFY(menu);
        QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(menu->actions().last()).center());
    });
    QWidget* const rows = findings.viewport();
    const QPoint place = findings.visualRect(findings.currentIndex()).center();
    QContextMenuEvent event(QContextMenuEvent::Keyboard, place, rows->mapToGlobal(place));
    QApplication::sendEvent(rows, &event);
    QVERIFY(testing::allModalsServed());
}

void EditingTour::editsAFloatVariable() {
    const Hands hands = stage_.hands();
    hands.clickNode("trvSystem", "C3");
    hands.clickNode("trvVar", "F1");
    stage_.inDialog("frmFloatVarEdit", [this](const Hands& editor) {
        editor.type("txtVarDefValue", "1.50");
        editor.pick("cbWidth", "5");
        editor.pick("cbPrecision", "2");
        stage_.show(editor.window(), "float-variable", "A float variable gets its width and precision.");
        editor.click("btnOK");
    });
    hands.click("btnEditVariable");
    QCOMPARE(hands.text("txtVarDefValue"), "1.5");
    hands.click("btnVarApply");
    QTRY_COMPARE(hands.find<QLabel>("lblFindings").text(), "No findings"); // now it fits
    hands.click("btnClosePanels");
    stage_.show("float-applied", "The page shows the float variable as the project now holds it.");
}

void EditingTour::editsABooleanVariable() {
    const Hands hands = stage_.hands();
    hands.clickNode("trvVar", "B1");
    stage_.inDialog("frmBoolVarEdit", [this](const Hands& editor) {
        editor.pick("cbDefVal", "1");
        editor.type("txtVarON", "RUN");
        editor.type("txtVarOFF", "STOP");
        stage_.show(editor.window(), "boolean-variable", "A Boolean variable gets its two texts.");
        editor.click("btnOK");
    });
    hands.click("btnEditVariable");
    QCOMPARE(hands.text("txtVarOnStr"), "RUN");
    hands.click("btnVarApply");
    stage_.show("boolean-applied", "The page shows the Boolean variable.");
}

void EditingTour::movesTheAddressMap() {
    const Hands hands = stage_.hands();
    hands.clickNode("trvSystem", "C2");
    hands.type("txtNewAltAddr", "400");
    QCOMPARE(hands.text("txtNewStdAddr"), "420");
    hands.type("txtNewAIAddr", "200");
    QVERIFY(!hands.isEnabled("btnModBusApply"));
    hands.type("txtNewDIAddr", "150");
    stage_.show("new-addresses", "New start addresses; the regular block follows the emergency block.");
    hands.click("btnModBusApply");
    stage_.show("addresses-applied", "Applied: these are the project's addresses now.");
}

void EditingTour::savesIt() {
    stage_.hands().press(QStringLiteral("Ctrl+S"));
    QTRY_COMPARE(stage_.window().windowTitle(), "Orvista Message Editor - [STATION]");
    stage_.keep(folder(), "edited");
}

void EditingTour::opensItAgain() {
    stage_.startEditor(folder() + "/STATION.orx");
    QTRY_COMPARE(stage_.window().windowTitle(), "Orvista Message Editor - [STATION]");
    const Hands hands = stage_.hands();
    hands.clickNode("trvSystem", "C4");
    hands.clickNode("trvMsg", "R3");
    QCOMPARE(shownScript(hands), levelScript + "\n");
    stage_.show("opened-again", "Opened by its path: everything is as it was entered.");
    hands.clickNode("trvSystem", "C1");
    hands.type("txtSystemIP", "127.0.0.1");
    hands.press(QStringLiteral("Ctrl+S"));
    QTRY_COMPARE(stage_.window().windowTitle(), "Orvista Message Editor - [STATION]");
    stage_.keep(folder(), "saved-again");
}

} // namespace orvista::tour
