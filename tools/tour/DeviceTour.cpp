#include "tools/tour/DeviceTour.h"

#include "tests/support/FreeTransferPort.h"
#include "tests/support/ModalDriver.h"
#include "widgets/DeviceTextEdit.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QMessageBox>
#include <QTableView>
#include <QTest>

namespace orvista::tour {

namespace {

/// Milliseconds after the start of what the panel shows: the message has entered and stands still, and the
/// blinking bitmap is lit.
constexpr const char* momentOfPictures = "8500";

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

void DeviceTour::showsTheDownloadedMessage() {
    const Hands hands = stage_.hands();
    hands.clickNode("trvSystem", "C4");
    hands.clickNode("trvMsg", "R3");
    QVERIFY(hands.find<DeviceTextEdit>("txtMsg").toPlainText().contains("DISPVAR 96 0 RED BLACK CoilVar1"));
    stage_.show("downloaded", "The downloaded project holds everything again.");
    hands.clickNode("trvSystem", "C1");
    hands.type("txtSystemIP", "127.0.0.1");
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
        dialog.click("btnStart");
        QTRY_VERIFY_WITH_TIMEOUT(dialog.isEnabled("btnAgain"), 30'000);
        QCOMPARE(dialog.find<QTableView>("tblDisplays").model()->index(0, 3).data().toString(), "done");
        stage_.show(dialog.window(), "several-displays",
                    "Many displays at once: one has everything, one is switched off.");
        dialog.click("btnCancel");
    });
    stage_.hands().find<QAction>("miToolsSeveral").trigger();
    QVERIFY(testing::allModalsServed());
    device_.reset();
}

} // namespace orvista::tour
