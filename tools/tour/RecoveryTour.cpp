#include "tools/tour/RecoveryTour.h"

#include "mainwindow/RecoveryFolder.h"
#include "tests/support/ModalDriver.h"
#include "widgets/DeviceTextEdit.h"

#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QTest>

namespace orvista::tour {

namespace {

const char* const typedScript = "TEXT 0 0 GREEN BLACK \"Pump 3 stands\"";

bool isKept(const QString& folder) {
    for (const QString& name : QDir(folder).entryList({QStringLiteral("*.recovery")}, QDir::Files)) {
        const auto work = RecoveryFolder::read(QDir(folder).filePath(name));
        if (work && !work->notApplied.empty() && work->notApplied.front().texts.front() == typedScript)
            return true;
    }
    return false;
}

} // namespace

void RecoveryTour::startWithTheStation() {
    stage_.startEditor(stage_.projectFolder("station") + "/STATION.orx", ModbusClient::modbusPort,
                       recoveryFolder());
    QTRY_COMPARE(stage_.window().windowTitle(), "Orvista Message Editor - [STATION]");
}

void RecoveryTour::bringsAScriptBackThatWasThrownAway() {
    startWithTheStation();
    const Hands hands = stage_.hands();
    hands.clickNode("trvSystem", "C4");
    hands.clickNode("trvMsg", "R6");
    hands.type("txtMsg", typedScript);
    hands.clickNode("trvMsg", "R7");
    auto& menu = hands.find<QMenu>("mnuEditRestoreScript");
    menu.popup(stage_.window().mapToGlobal(QPoint(0, 0)));
    QTRY_VERIFY(menu.isVisible());
    QVERIFY(menu.actions().at(0)->text().startsWith("STDMSG6, "));
    QTest::keyClick(&menu, Qt::Key_Down);
    QTest::keyClick(&menu, Qt::Key_Return);
    QCOMPARE(hands.text("txtMsgName"), "STDMSG6");
    QCOMPARE(hands.find<DeviceTextEdit>("txtMsg").toPlainText(), typedScript);
    stage_.show("script-back", "A script that a click on another message threw away is back in its box.");
}

void RecoveryTour::endsWithoutSaving() {
    QTRY_VERIFY(isKept(recoveryFolder()));
    startWithTheStation();
    const Hands hands = stage_.hands();
    hands.find<QAction>("miViewPanels").trigger();
    QVERIFY(hands.find<QLabel>("lblUnsavedWork").isVisible());
    stage_.show("unsaved-work", "The editor ended without a save; its panels tell that work is there.");
}

void RecoveryTour::restoresTheUnsavedWork() {
    stage_.inDialog("frmRestore", [this](const Hands& dialog) {
        stage_.show(dialog.window(), "restore", "What was not saved is listed, with what differs.");
        stage_.inDialog("RemoveQuestion", [this](const Hands& box) {
            stage_.show(box.window(), "remove", "A row can be removed; the answer at hand is No.");
            box.press(Qt::Key_Return);
        });
        dialog.click("btnRemove");
        dialog.click("btnOK");
    });
    const Hands hands = stage_.hands();
    hands.click("btnUnsavedWork");
    QTRY_COMPARE(stage_.window().windowTitle(), "Orvista Message Editor - [STATION*]");
    QVERIFY(testing::allModalsServed());
    QCOMPARE(hands.find<DeviceTextEdit>("txtMsg").toPlainText(), typedScript);
    QVERIFY(hands.isEnabled("btnMsgApply"));
    stage_.show("restored", "It is open again, and the script that was not applied is in its box.");
}

void RecoveryTour::bringsTheBitmapAlong() {
    stage_.answerWithFile(stage_.projectFolder("moved") + "/MOVED");
    const Hands hands = stage_.hands();
    hands.press(QStringLiteral("Ctrl+Shift+S"));
    QTRY_COMPARE(stage_.window().windowTitle(), "Orvista Message Editor - [MOVED]");
    QCOMPARE(hands.find<QPushButton>("btnCopyBitmaps").text(), "Copy 1 Bitmap");
    stage_.show("copy-bitmap", "Saved elsewhere; one press brings along the bitmap that stayed behind.");
    hands.click("btnCopyBitmaps");
    QVERIFY(QFile::exists(stage_.projectFolder("moved") + "/alarm.bmp"));
}

} // namespace orvista::tour
