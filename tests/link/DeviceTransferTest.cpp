#include "link/forms/DeviceTransfer.h"

#include "link/TransferControls.h"
#include "mainwindow/ProjectChanges.h"
#include "tests/support/EditorFixture.h"
#include "tests/support/FtpTestServer.h"
#include "tests/support/ModalDriver.h"
#include "tests/support/NamedItem.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <optional>

using namespace orvista;
using namespace orvista::testing;

namespace {

/// The real main window with the real transfer behind its commands.
struct TransferEditor : EditorFixture {
    TransferEditor() {
        startWithNewProject("Plant");
        type("txtSystemIP", QStringLiteral("127.0.0.1"));
        transfer.emplace(project, window->lifecycle(), chooser, messages, *window, &makeTransferControl);
        window->useTransfer(*transfer);
        transfer->tellCauses([this](const QString& text) { window->showNotice(text); });
    }
    ~TransferEditor() { window.reset(); }

    void save() {
        trigger("miFileSave");
        messages.shown.clear();
    }

    std::optional<DeviceTransfer> transfer;
};

/// The user leaves the connection dialog with Connect, after typing this port.
void connectWith(const QString& port) {
    onModal(QStringLiteral("frmConnection"), [port](QWidget* dialog) {
        auto* const box = dialog->findChild<QLineEdit*>(QStringLiteral("txtPort"));
        QCOMPARE(dialog->findChild<QLineEdit*>(QStringLiteral("txtIP"))->text(), QStringLiteral("127.0.0.1"));
        QCOMPARE(box->text(), QStringLiteral("7000"));
        box->selectAll();
        QTest::keyClicks(box, port);
        QTest::mouseClick(dialog->findChild<QPushButton*>(QStringLiteral("btnOK")), Qt::LeftButton);
    });
}

void connectTo(const FtpTestServer& server) {
    connectWith(QString::number(server.port()));
}

void cancelConnection() {
    onModal(QStringLiteral("frmConnection"), [](QWidget* dialog) { dialog->close(); });
}

} // namespace

class DeviceTransferTest : public QObject {
    Q_OBJECT
private slots:
    void cleanup() { QVERIFY(allModalsServed()); }
    void uploadAndDownloadBringEverythingBack();
    void aRefusedConnectionShowsItsMessage();
    void aFailedFileShowsItsPath();
    void aPortBeyondSixteenBitsEndsInTheOverflowBox();
    void closingTheConnectionDialogUploadsNothing();
    void aFailedDownloadLeavesTheProject();
    void onlyADownloadThatSucceedsEmptiesTheUndoSteps();
    void theNextTransferStartsWithTheDefaultPort();
};

void DeviceTransferTest::uploadAndDownloadBringEverythingBack() {
    const FtpTestServer server;
    TransferEditor editor;
    editor.project.STDMSG[2] = "CLEAR\r\nBITMAP \xE9.bmp";
    writeBytes(editor.projectFolder.file("\xC3\xA9.bmp"), "picture");
    editor.save();
    connectTo(server);
    editor.trigger("miLinkUpload");
    QCOMPARE(editor.messages.shown.size(), std::size_t{1});
    QCOMPARE(editor.messages.shown[0].text, std::string("All files were successfully uploaded"));
    QVERIFY(editor.messages.shown[0].icon == MessageIcon::Information);
    QCOMPARE(server.bytes("\xE9.bmp"), std::string("picture"));
    QCOMPARE(server.bytes("stdmsg.ilm"), fileBytes(editor.projectFolder.file("stdmsg.ilm")));
    QCOMPARE(server.bytes("default.pls"), fileBytes(editor.projectFolder.file("default.pls")));

    const TemporaryFolder target;
    editor.chooser.newProjects.push_back({target.path(), "Fetched"});
    connectTo(server);
    editor.trigger("miLinkDownload");
    QCOMPARE(editor.messages.shown.size(), std::size_t{1});
    QCOMPARE(editor.title(), QStringLiteral("Orvista Message Editor - [Fetched*]"));
    QCOMPARE(editor.project.STDMSG[2], std::string("CLEAR\r\nBITMAP \xE9.bmp\r\n"));
    QCOMPARE(fileBytes(target.file("\xC3\xA9.bmp")), std::string("picture"));
    QVERIFY(!editor.enabled("miLinkUpload"));
    QVERIFY(!editor.enabled("UPLOAD"));
}

void DeviceTransferTest::aRefusedConnectionShowsItsMessage() {
    std::optional<FtpTestServer> server(std::in_place);
    const QString port = QString::number(server->port());
    server.reset();
    TransferEditor editor;
    editor.save();
    connectWith(port);
    editor.trigger("UPLOAD");
    QCOMPARE(editor.messages.shown.size(), std::size_t{1});
    QCOMPARE(editor.messages.shown[0].text, std::string("Connect Fail!"));
    QVERIFY(editor.messages.shown[0].icon == MessageIcon::Exclamation);
    QCOMPARE(editor.find<QLabel>("lblNotice")->text(), QStringLiteral("127.0.0.1: connection refused"));
}

void DeviceTransferTest::aFailedFileShowsItsPath() {
    const FtpTestServer server({"--fault", "full", "--files-served", "1"});
    TransferEditor editor;
    editor.save();
    connectTo(server);
    editor.trigger("miLinkUpload");
    QCOMPARE(editor.messages.shown.size(), std::size_t{1});
    QCOMPARE(editor.messages.shown[0].text, "Unable to upload " + editor.projectFolder.file("ilmvar.def"));
    QVERIFY(server.has("modbus.adr"));
    QVERIFY(!server.has("stdmsg.ilm"));
    const auto* const line = editor.find<QLabel>("lblNotice");
    QVERIFY(line->isVisible());
    QCOMPARE(line->text(), QStringLiteral("ilmvar.def was not taken: 452 Insufficient storage space."));
    // The next transfer takes it away.
    const FtpTestServer good;
    connectTo(good);
    editor.trigger("miLinkUpload");
    QCOMPARE(editor.messages.shown.back().text, std::string("All files were successfully uploaded"));
    QVERIFY(!line->isVisible());
}

void DeviceTransferTest::aPortBeyondSixteenBitsEndsInTheOverflowBox() {
    TransferEditor editor;
    editor.save();
    for (const char* command : {"miLinkUpload", "UPLOAD", "miLinkDownload", "DOWNLOAD"}) {
        editor.messages.shown.clear();
        editor.chooser.newProjects = {{editor.projectFolder.path(), "Other"}};
        connectWith(QStringLiteral("32768"));
        editor.trigger(command);
        QCOMPARE(editor.messages.shown.size(), std::size_t{1});
        QCOMPARE(editor.messages.shown[0].text, std::string("Overflow"));
        QCOMPARE(editor.title(), QStringLiteral("Orvista Message Editor - [Plant]"));
    }
}

void DeviceTransferTest::closingTheConnectionDialogUploadsNothing() {
    TransferEditor editor;
    editor.save();
    cancelConnection();
    editor.trigger("miLinkUpload");
    QVERIFY(editor.messages.shown.empty());
}

void DeviceTransferTest::aFailedDownloadLeavesTheProject() {
    const FtpTestServer server;
    TransferEditor editor;
    editor.save();
    const TemporaryFolder target;
    editor.chooser.newProjects.push_back({target.path(), "Fetched"});
    connectTo(server);
    editor.trigger("miLinkDownload");
    QCOMPARE(editor.messages.shown.size(), std::size_t{1});
    QCOMPARE(editor.messages.shown[0].text, std::string("Download Fail!"));
    QCOMPARE(editor.title(), QStringLiteral("Orvista Message Editor - [Plant]"));
}

void DeviceTransferTest::onlyADownloadThatSucceedsEmptiesTheUndoSteps() {
    const FtpTestServer server;
    const TemporaryFolder target;
    TransferEditor editor;
    const auto undo = [&editor] { return editor.find<QAction>("miEditUndo")->text(); };
    const auto download = [&] {
        editor.chooser.newProjects.push_back({target.path(), "Fetched"});
        connectTo(server);
        editor.trigger("miLinkDownload");
    };
    editor.window->changes().change(QStringLiteral("Paste"),
                                    std::vector{scriptChange(editor.project, "STDMSG3", "CLEAR\r\nSTILL 1")});
    editor.save();
    download(); // nothing is there yet
    QCOMPARE(editor.messages.shown.back().text, std::string("Download Fail!"));
    QCOMPARE(undo(), QStringLiteral("Undo Paste"));

    editor.window->changes().change(QStringLiteral("Clear"),
                                    std::vector{scriptChange(editor.project, "STDMSG3", "CLEAR")});
    connectTo(server);
    editor.trigger("miLinkUpload"); // which saves first
    QCOMPARE(editor.messages.shown.back().text, std::string("All files were successfully uploaded"));
    QCOMPARE(undo(), QStringLiteral("Undo Clear"));
    editor.trigger("miEditUndo");
    QCOMPARE(editor.project.STDMSG[2], std::string("CLEAR\r\nSTILL 1"));
    QVERIFY(editor.project.modified);

    editor.messages.answers.push_back(Answer::No);
    download();
    QCOMPARE(editor.title(), QStringLiteral("Orvista Message Editor - [Fetched*]"));
    QCOMPARE(undo(), QStringLiteral("Undo"));
    QCOMPARE(editor.find<QAction>("miEditRedo")->text(), QStringLiteral("Redo"));
    editor.trigger("miEditUndo");
    QCOMPARE(editor.project.STDMSG[2], std::string("CLEAR\r\n"));
}

void DeviceTransferTest::theNextTransferStartsWithTheDefaultPort() {
    TransferEditor editor;
    editor.save();
    for (int transfer = 0; transfer < 2; ++transfer) {
        onModal(QStringLiteral("frmConnection"), [](QWidget* dialog) {
            auto* const port = dialog->findChild<QLineEdit*>(QStringLiteral("txtPort"));
            QCOMPARE(port->text(), QStringLiteral("7000"));
            port->setText(QStringLiteral("1"));
            dialog->close();
        });
        editor.trigger("miLinkUpload");
    }
}

QTEST_MAIN(DeviceTransferTest)
#include "DeviceTransferTest.moc"
