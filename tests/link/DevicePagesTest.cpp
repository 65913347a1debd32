#include "mainwindow/EditorProgram.h"
#include "model/Bytes.h"
#include "tests/support/ModalDriver.h"
#include "tests/support/TemporaryFolder.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTabWidget>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>

using namespace orvista;
using namespace orvista::testing;

namespace {

/// The whole program on a saved project, whose device is on this machine.
class RunningProgram {
public:
    explicit RunningProgram(quint16 modbusPort) : program_(programFolder_.path(), modbusPort) {
        Project project;
        project.ResetAddressMap();
        project.ClearMessages();
        project.IP = "127.0.0.1";
        MemorySink file;
        DocMgrModule::writeProjectFile(file, project);
        const std::string path = projectFolder_.file("Plant.orx");
        writeBytes(path, file.bytes());
        program_.window().openAtStart(path);
        program_.window().show();
        ready_ = QTest::qWaitFor([this] { return tabs()->isEnabled(); });
        tabs()->setCurrentIndex(tabs()->count() - 1);
    }

    bool isReady() const { return ready_; }
    template <typename Widget>
    Widget* child(const char* name) {
        return program_.window().findChild<Widget*>(QString::fromLatin1(name));
    }
    void click(const char* button) { QTest::mouseClick(child<QPushButton>(button), Qt::LeftButton); }
    bool allButtonsEnabled() {
        return child<QPushButton>("btnEmgMsgUpdate")->isEnabled() &&
               child<QPushButton>("btnRegMsgUpdate")->isEnabled() &&
               child<QPushButton>("cmdUpdateReg")->isEnabled() &&
               child<QPushButton>("cmdUpdateCoil")->isEnabled();
    }

private:
    QTabWidget* tabs() { return child<QTabWidget>("tabDetails"); }

    TemporaryFolder programFolder_;
    TemporaryFolder projectFolder_;
    EditorProgram program_;
    bool ready_ = false;
};

/// Takes one request after the other.
class Device : public QTcpServer {
public:
    Device() {
        listen(QHostAddress::LocalHost);
        connect(this, &QTcpServer::newConnection, this, [this] {
            while (QTcpSocket* const client = nextPendingConnection())
                connect(client, &QTcpSocket::disconnected, this,
                        [this, client] { requests << client->readAll(); });
        });
    }
    QList<QByteArray> requests;
};

/// A message box comes and is dismissed; its text is noted.
void expectMessage(QString& text) {
    onModal(QStringLiteral("messageBox"), [&text](QWidget* box) {
        text = qobject_cast<QMessageBox*>(box)->text();
        box->close();
    });
}

} // namespace

class DevicePagesTest : public QObject {
    Q_OBJECT
private slots:
    void cleanup() { QVERIFY(allModalsServed()); }
    void everyButtonSendsWhatThePageShows();
    void thePressedButtonKeepsTheKeyboard();
    void theKeyboardStaysWhereTheUserTookIt();
    void typedAddressesAreNotCompleted();
    void anOverflowSendsNothing();
    void aDeviceThatIsOffShowsOneMessage();
    void thePortBoxIsNotConsulted();
    void theWindowClosesWithARequestUnderWay();
};

void DevicePagesTest::everyButtonSendsWhatThePageShows() {
    Device device;
    RunningProgram program(device.serverPort());
    QVERIFY(program.isReady());
    program.child<QCheckBox>("chkEmergMsg(0)")->setChecked(true);
    program.child<QCheckBox>("chkEmergMsg(2)")->setChecked(true);
    program.click("btnEmgMsgUpdate");
    QVERIFY(!program.allButtonsEnabled());
    QTRY_VERIFY(program.allButtonsEnabled());
    program.child<QCheckBox>("chkRegMsg(39)")->setChecked(true);
    program.click("btnRegMsgUpdate");
    QTRY_VERIFY(program.allButtonsEnabled());
    program.child<QCheckBox>("chkUpdateCoil")->setChecked(true);
    program.click("cmdUpdateCoil");
    QTRY_VERIFY(program.allButtonsEnabled());
    program.child<QLineEdit>("txtFloat")->setText(QStringLiteral("123.456"));
    program.click("cmdUpdateReg");
    QTRY_COMPARE(device.requests.size(), 4);
    QCOMPARE(device.requests[0], QByteArray::fromHex("01020000000AFF0F012C001403050000"));
    QCOMPARE(device.requests[1], QByteArray::fromHex("01020000000CFF0F01400028050000000080"));
    QCOMPARE(device.requests[2], QByteArray::fromHex("010200000006FF050064FF00"));
    QCOMPARE(device.requests[3], QByteArray::fromHex("01020000000BFF100064000204E97942F6"));
}

void DevicePagesTest::thePressedButtonKeepsTheKeyboard() {
    Device device;
    RunningProgram program(device.serverPort());
    QVERIFY(program.isReady());
    for (const char* name : {"btnEmgMsgUpdate", "btnRegMsgUpdate", "cmdUpdateCoil", "cmdUpdateReg"}) {
        auto* button = program.child<QPushButton>(name);
        button->setFocus();
        for (int press = 0; press < 2; ++press) {
            QCOMPARE(button->window()->focusWidget(), button);
            QTest::keyClick(button->window()->focusWidget(), Qt::Key_Space);
            QVERIFY(!program.allButtonsEnabled());
            QTRY_VERIFY(program.allButtonsEnabled());
        }
    }
    QTRY_COMPARE(device.requests.size(), 8);
}

void DevicePagesTest::theKeyboardStaysWhereTheUserTookIt() {
    Device device;
    RunningProgram program(device.serverPort());
    QVERIFY(program.isReady());
    auto* button = program.child<QPushButton>("btnRegMsgUpdate");
    auto* box = program.child<QLineEdit>("txtFloat");
    button->setFocus();
    QTest::keyClick(button, Qt::Key_Space);
    box->setFocus();
    QTRY_VERIFY(program.allButtonsEnabled());
    QCOMPARE(box->window()->focusWidget(), box);
}

void DevicePagesTest::typedAddressesAreNotCompleted() {
    Device device;
    RunningProgram program(device.serverPort());
    auto* const list = program.child<QComboBox>("cbDIAddr");
    const int entries = list->count();
    list->setFocus();
    list->lineEdit()->selectAll();
    QTest::keyClicks(list->lineEdit(), QStringLiteral("1"));
    program.click("cmdUpdateCoil");
    QTRY_COMPARE(device.requests.size(), 1);
    QCOMPARE(device.requests[0], QByteArray::fromHex("010200000006FF0500010000"));
    QCOMPARE(list->count(), entries);
}

void DevicePagesTest::anOverflowSendsNothing() {
    Device device;
    RunningProgram program(device.serverPort());
    QString text;
    expectMessage(text);
    program.child<QLineEdit>("txtEMsgAddr")->setText(QStringLiteral("65536"));
    program.click("btnEmgMsgUpdate");
    QCOMPARE(text, QStringLiteral("Overflow"));
    QVERIFY(program.allButtonsEnabled());

    expectMessage(text);
    program.child<QLineEdit>("txtFloat")->setText(QStringLiteral("1e39"));
    program.click("cmdUpdateReg");
    QCOMPARE(text, QStringLiteral("Overflow"));
    QVERIFY(program.allButtonsEnabled());

    program.click("cmdUpdateCoil");
    QTRY_COMPARE(device.requests.size(), 1);
}

void DevicePagesTest::aDeviceThatIsOffShowsOneMessage() {
    quint16 port = 0;
    {
        const Device device;
        port = device.serverPort();
    }
    RunningProgram program(port);
    QString text;
    expectMessage(text);
    program.click("cmdUpdateCoil");
    QVERIFY(!program.allButtonsEnabled());
    QTRY_VERIFY(program.allButtonsEnabled());
    QCOMPARE(text, QStringLiteral("Connection refused"));
}

void DevicePagesTest::thePortBoxIsNotConsulted() {
    Device device;
    RunningProgram program(device.serverPort());
    program.child<QLineEdit>("txtPort")->setText(QStringLiteral("1"));
    program.click("cmdUpdateCoil");
    QTRY_COMPARE(device.requests.size(), 1);
}

void DevicePagesTest::theWindowClosesWithARequestUnderWay() {
    Device device;
    {
        RunningProgram program(device.serverPort());
        program.click("cmdUpdateCoil");
    }
    RunningProgram next(device.serverPort());
    next.click("cmdUpdateReg");
    QTRY_VERIFY(next.allButtonsEnabled());
}

QTEST_MAIN(DevicePagesTest)
#include "DevicePagesTest.moc"
