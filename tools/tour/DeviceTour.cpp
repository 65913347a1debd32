#include "tools/tour/DeviceTour.h"

#include "tests/support/FreeTransferPort.h"
#include "tests/support/ModalDriver.h"
#include "widgets/DeviceTextEdit.h"
#include "widgets/PanelView.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QTableView>
#include <QTest>

#include <utility>

namespace orvista::tour {

namespace {

/// Milliseconds after the start of what the panel shows: the message has entered and stands still, and the
/// blinking bitmap is lit.
constexpr const char* momentOfPictures = "8500";

QString stateOf(const Hands& dialog, int row) {
    return dialog.find<QTableView>("tblDisplays").model()->index(row, 3).data().toString();
}

/// Into the row below the others.
void typeADisplay(const Hands& dialog) {
    auto& table = dialog.find<QTableView>("tblDisplays");
    const int last = table.model()->rowCount() - 1;
    for (const auto& [column, text] : {std::pair(0, "Yard"), std::pair(1, "127.0.0.1:2")}) {
        table.setFocus();
        table.setCurrentIndex(table.model()->index(last, column));
        QTest::keyClick(&table, Qt::Key_Return);
        auto* const box = table.viewport()->findChildren<QLineEdit*>().last(); // earlier ones are going
        QTest::keyClicks(box, text);
        QTest::keyClick(box, Qt::Key_Return);
        QTRY_COMPARE(table.model()->index(last, column).data().toString(), text);
    }
}

} // namespace

void DeviceTour::startsADevice() {
    const QString folder = stage_.path(QStringLiteral("device"));
    QVERIFY(QDir(folder).removeRecursively() && QDir().mkpath(folder));
    transferPort_ = testing::freeTransferPort();
    device_ = std::make_unique<testing::SimulatorProcess>(
        QStringList{"--root", folder, "--transfer-port", QString::number(transferPort_), "--snapshot",
                    panelFile(), "--at", momentOfPictures});
    QCOMPARE(device_->transferPort(), transferPort_);
    stage_.startEditor(stage_.projectFolder("station") + "/STATION.orx", device_->modbusPort());
    QTRY_COMPARE(stage_.window().windowTitle(), "Orvista Message Editor - [STATION]");
}

void DeviceTour::connectToDevice(const QString& picture, const QString& line) {
    stage_.inDialog("frmConnection", [this, picture, line](const Hands& dialog) {
        dialog.type("txtPort", QString::number(transferPort_));
        stage_.show(dialog.window(), picture, line);
        dialog.click("btnOK");
    });
}

void DeviceTour::uploadsTheProject() {
    connectToDevice("connection", "Upload asks for the device's address and port.");
    stage_.inDialog("messageBox", [this](const Hands& box) {
        const QString text = dynamic_cast<QMessageBox&>(box.window()).text();
        if (text != "All files were successfully uploaded")
            throw std::logic_error(text.toStdString());
        stage_.show(box.window(), "uploaded", "The five device files and the bitmap are on the device.");
        box.press(Qt::Key_Return);
    });
    stage_.hands().clickTool("UPLOAD");
    QVERIFY(testing::allModalsServed());
    QVERIFY(device_->waitForLine("The files are shown"));
}

void DeviceTour::showPanelAfter(const QString& request, const QString& name, const QString& line) {
    // The buttons are enabled again once the request is sent.
    QTRY_VERIFY(stage_.hands().isEnabled("btnRegMsgUpdate"));
    if (!device_->waitForLine("\\[" + request + "\\]") || !device_->waitForLine("^Picture written"))
        QFAIL("the device did not get the request");
    stage_.show(QImage(panelFile()), name, line);
}

void DeviceTour::switchesARegularMessageOn() {
    const Hands hands = stage_.hands();
    hands.clickNode("trvSystem", "C5");
    hands.click("chkRegMsg(2)");
    stage_.show("tick-message", "Regular message 3 is ticked on the test page.");
    hands.click("btnRegMsgUpdate");
    showPanelAfter("01 02 00 00 00 0C FF 0F 01 A4 00 28 05 04 00 00 00 00", "panel-message",
                   "The display shows it, its fields with the variables' defaults.");
}

void DeviceTour::writesACoilAndAFloat() {
    const Hands hands = stage_.hands();
    hands.click("cmdUpdateCoil");
    showPanelAfter("01 02 00 00 00 06 FF 05 00 96 00 00", "panel-coil",
                   "Coil 150 is written off: the Boolean field shows its other text.");
    hands.type("txtFloat", "12.34");
    stage_.show("write-float", "A value for the float variable at register 200.");
    hands.click("cmdUpdateReg");
    showPanelAfter("01 02 00 00 00 0B FF 10 00 C8 00 02 04 70 A4 41 45", "panel-float",
                   "The display shows the new value.");
}

void DeviceTour::overridesItByAnEmergencyMessage() {
    const Hands hands = stage_.hands();
    hands.click("chkEmergMsg(0)");
    hands.click("btnEmgMsgUpdate");
    showPanelAfter("01 02 00 00 00 0A FF 0F 01 90 00 14 03 01 00 00", "panel-emergency",
                   "An emergency message goes before all others.");
}

void DeviceTour::watchesTheDisplay() {
    const Hands hands = stage_.hands();
    hands.find<QAction>("miViewMonitor").trigger();
    hands.click("btnMonitorStart");
    QTRY_VERIFY(hands.isEnabled("btnMonitorTake"));
    stage_.show(
        "monitor",
        "The monitor reads which messages are on and every value, and draws what the display should show.");
    hands.click("chkMonitorOnlyOn");
    stage_.show("monitor-on", "Only what is on, with the values that are not 0.");
    hands.click("btnMonitorTake");
    hands.click("btnMonitorStop");
    hands.click("btnClosePanels");
}

void DeviceTour::verifiesTheUpload() {
    const Hands hands = stage_.hands();
    connectToDevice("verify", "Verify asks for the device as the upload does.");
    hands.find<QAction>("miToolsVerify").trigger();
    QVERIFY(testing::allModalsServed());
    QVERIFY(hands.find<QLabel>("lblComparison").text().contains("holds every byte that an upload sends"));
    stage_.show("verified", "Every byte that was sent is on the device.");
}

void DeviceTour::acceptsAtTheDisplay() {
    const Hands hands = stage_.hands();
    hands.clickNode("trvSystem", "C5");
    hands.click("chkEmergMsg(0)"); // off: nothing is switched while an emergency message is on
    hands.click("btnEmgMsgUpdate");
    QTRY_VERIFY(hands.isEnabled("btnEmgMsgUpdate"));
    connectToDevice("accept-connection", "Accept at the Display asks for the device, too.");
    stage_.inDialog("frmAccept", [this](const Hands& dialog) {
        dialog.type("txtAcceptName", "J. Weiss");
        stage_.answerWithFile(stage_.path("STATION-accepted.json"));
        dialog.click("btnAcceptStart");
        QTRY_VERIFY(dialog.isEnabled("btnAcceptGood"));
        dialog.type("txtAcceptRemark", "seen from the gate");
        const auto& panel = dialog.find<PanelView>("acceptPanel");
        QTRY_VERIFY_WITH_TIMEOUT(panel.shown().at(1, 7) != Led::Off, 20'000); // it comes in from the right
        stage_.show(dialog.window(), "acceptance",
                    "One message after the other is on, and what is seen of each is written down.");
        dialog.click("btnAcceptGood");
        QTRY_VERIFY(dialog.isEnabled("btnAcceptGood"));
        dialog.click("btnCancel");
        QTRY_VERIFY(!dialog.window().isVisible());
    });
    hands.find<QAction>("miToolsAccept").trigger();
    QVERIFY(testing::allModalsServed());
    QVERIFY(QFile::remove(stage_.path("STATION-accepted.json")));
}

void DeviceTour::comparesWithTheDevice() {
    const Hands hands = stage_.hands();
    hands.clickNode("trvSystem", "C4");
    hands.clickNode("trvMsg", "R3");
    hands.typeLines(
        "txtMsg", {"CLEAR", "TEXT 0 0 RED BLACK \"Level           \"", "DISPVAR 48 0 ORANGE BLACK RegVar1"});
    hands.click("btnMsgApply");
    connectToDevice("compare", "Compare asks for it, too.");
    hands.find<QAction>("miToolsCompareDisplay").trigger();
    QVERIFY(testing::allModalsServed());
    auto& differences = hands.find<QTableView>("tblComparison");
    QVERIFY(differences.model()->rowCount() > 1);
    differences.selectRow(0);
    stage_.show("comparison", "What the device holds otherwise, line beside line.");
    differences.selectAll();
    hands.click("btnTakeTheirs");
    QVERIFY(hands.find<QLabel>("lblComparison").text().startsWith("No differences"));
    stage_.show("taken-over", "Theirs is taken: the message is again as it was sent.");
    hands.press(QStringLiteral("Ctrl+S"));
    QTRY_COMPARE(stage_.window().windowTitle(), "Orvista Message Editor - [STATION]");
    hands.click("btnClosePanels");
}

void DeviceTour::downloadsIntoANewProject() {
    const QString folder = stage_.projectFolder("from-device");
    stage_.inDialog("frmNewProject", [this, folder](const Hands& dialog) {
        dialog.type("txtProjName", "FROMDEVICE");
        dialog.type("txtLocation", folder);
        stage_.show(dialog.window(), "download", "Download asks for a new project first.");
        dialog.click("btnOK");
    });
    connectToDevice("download-connection", "Then for the device, as the upload does.");
    stage_.hands().clickTool("DOWNLOAD");
    QCOMPARE(stage_.window().windowTitle(), "Orvista Message Editor - [FROMDEVICE*]");
    QVERIFY(testing::allModalsServed());
}

void DeviceTour::takesTheAddressItCameFrom() {
    const Hands hands = stage_.hands();
    hands.clickNode("trvSystem", "C1");
    QTRY_VERIFY(hands.find<QWidget>("btnUseAddress").isVisible());
    stage_.show("downloaded-from", "Its System page still has another address than the device.");
    hands.click("btnUseAddress");
    QCOMPARE(hands.text("txtSystemIP"), "127.0.0.1");
    QVERIFY(!hands.find<QWidget>("btnUseAddress").isVisible());
}

void DeviceTour::showsTheDownloadedMessage() {
    const Hands hands = stage_.hands();
    hands.clickNode("trvSystem", "C4");
    hands.clickNode("trvMsg", "R3");
    QVERIFY(hands.find<DeviceTextEdit>("txtMsg").toPlainText().contains("DISPVAR 96 0 RED BLACK CoilVar1"));
    stage_.show("downloaded", "The downloaded project holds everything again.");
    hands.press(QStringLiteral("Ctrl+S"));
    QTRY_COMPARE(stage_.window().windowTitle(), "Orvista Message Editor - [FROMDEVICE]");
    stage_.keep(stage_.projectFolder("from-device"), "downloaded");
}

void DeviceTour::sendsToSeveralDisplays() {
    // The editor looks for orvista beside itself, and plays in a folder of the tour. On Windows orvista needs
    // its library there, too.
    const QDir ours(QString::fromStdString(programFolder()));
    for (const QString& name : ours.entryList({"orvista", "orvista.exe", "libcurl.dll"}, QDir::Files))
        QVERIFY(QFile::copy(ours.filePath(name), stage_.path("program/" + name)));
    // The second display is switched off.
    QApplication::clipboard()->setText(
        QStringLiteral("name,address,port\nHall,127.0.0.1,%1\nGate,127.0.0.1,1\n").arg(transferPort_));
    stage_.inDialog("frmSeveralDisplays", [this](const Hands& dialog) {
        dialog.click("btnPaste");
        typeADisplay(dialog);
        dialog.click("chkCheckFirst");
        dialog.click("chkVerify");
        dialog.click("btnStart");
        QTRY_VERIFY_WITH_TIMEOUT(dialog.isEnabled("btnAgain"), 30'000);
        QCOMPARE(stateOf(dialog, 0), "done");
        stage_.show(dialog.window(), "several-displays",
                    "Many displays at once: one has everything, two are switched off.");
        dialog.click("btnCompare");
        QTRY_VERIFY_WITH_TIMEOUT(dialog.isEnabled("btnAgain"), 30'000);
        QCOMPARE(stateOf(dialog, 0), "equal");
        stage_.show(dialog.window(), "several-compared", "Compare sends nothing and tells who holds it.");
        dialog.click("btnCancel");
    });
    stage_.hands().find<QAction>("miToolsSeveral").trigger();
    QVERIFY(testing::allModalsServed());
}

void DeviceTour::tellsHowOldAReadingIs() {
    const Hands hands = stage_.hands();
    hands.find<QAction>("miViewMonitor").trigger();
    hands.click("btnMonitorStart");
    QTRY_VERIFY(hands.isEnabled("btnMonitorTake"));
    device_.reset();
    QTRY_VERIFY(!hands.isEnabled("btnMonitorTake"));
    QVERIFY(hands.find<QLabel>("lblMonitorState").text().contains("(as of "));
    stage_.show("monitor-silent", "The display is switched off: the monitor tells when it read last.");
    hands.click("btnMonitorStop");
    hands.click("btnClosePanels");
}

void DeviceTour::triesWithoutADisplay() {
#ifdef Q_OS_WIN
    QSKIP("the simulated display would take the ports of a device");
#else
    const QString home = stage_.projectFolder("tried");
    stage_.setUpTryOut();
    qputenv("HOME", QFile::encodeName(home)); // where the list of folders begins
    stage_.inDialog("frmSelDir", [this](const Hands& dialog) {
        stage_.show(dialog.window(), "try-folder", "Try without a Display asks where its copy may go.");
        dialog.click("btnOK");
    });
    const Hands hands = stage_.hands();
    hands.find<QAction>("miToolsTry").trigger();
    QVERIFY(testing::allModalsServed());
    QTRY_COMPARE(stage_.window().windowTitle(), "Orvista Message Editor - [PUMPSTATION]");
    QVERIFY(hands.find<QWidget>("btnGoThere").isVisible());
    stage_.show("try", "The example is open at its first message; a line tells how to go on.");
    hands.click("btnGoThere");
    QVERIFY(hands.find<QWidget>("btnRegMsgUpdate").isVisible());
#endif
}

} // namespace orvista::tour
