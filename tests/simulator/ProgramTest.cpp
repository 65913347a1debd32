#include "link/ModbusFrames.h"
#include "link/ftp/FtpTransferControl.h"
#include "tests/simulator/DeviceFixture.h"
#include "tests/support/SimulatorProcess.h"

#include <QColor>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>
#include <unistd.h>

namespace orvista {

using testing::messageFile;
using testing::page;
using testing::SimulatorProcess;
using testing::TemporaryFolder;
using testing::writeBytes;

namespace {

/// The light of one dot in a picture file, at eight pixels a dot behind a rim of twelve.
Led dotIn(const QString& file, int x, int y) {
    const QColor colour = QImage(file).pixelColor(12 + x * 8 + 4, 12 + y * 8 + 4);
    // A lens that is off still catches its neighbour's glow.
    if (colour.value() < 150)
        return Led::Off;
    if (colour.green() > colour.red())
        return Led::Green;
    return colour.green() > 190 ? Led::Orange : Led::Red;
}

void writeDeviceFiles(const TemporaryFolder& folder) {
    writeBytes(folder.file("modbus.adr"),
               "AnalogInput    100\r\nDigitalInput   100\r\nAlertMessage   300\r\n");
    writeBytes(folder.file("ilmvar.def"), "");
    writeBytes(folder.file("stdmsg.ilm"), messageFile("STDMSG", {page("TEXT 0 0 RED GREEN \" \"")}));
    writeBytes(folder.file("altmsg.ilm"), messageFile("ALTMSG", {page("TEXT 0 0 RED ORANGE \" \"")}));
    writeBytes(folder.file("default.pls"), "DISPMSG STDMSG1\r\n");
}

constexpr const char* deviceFiles[] = {"modbus.adr", "ilmvar.def", "stdmsg.ilm", "altmsg.ilm", "default.pls"};

/// Number of files that went through.
int upload(const TemporaryFolder& folder, quint16 port) {
    FtpTransferControl control;
    control.RemoteAddress("127.0.0.1");
    control.RemotePort(static_cast<std::int16_t>(port));
    if (control.OpenLink() <= 0)
        return -1;
    control.PrepareUpload("");
    int stored = 0;
    for (const char* name : deviceFiles) {
        if (control.UploadFile(folder.file(name)) <= 0)
            break;
        ++stored;
    }
    if (stored == 5)
        control.FinishUpload();
    control.CloseLink();
    return stored;
}

bool setCoil(quint16 port, std::uint16_t address, bool on) {
    QTcpSocket client;
    client.connectToHost(QHostAddress::LocalHost, port);
    const Frame frame = coilRequest(address, on);
    client.write(reinterpret_cast<const char*>(frame.data()), static_cast<qint64>(frame.size()));
    return client.waitForBytesWritten(10'000) && client.waitForReadyRead(10'000);
}

/// The control's ports have 16 bits with a sign; the system hands out higher ones, too.
QString freeLowPort() {
    for (quint16 port = 20'000 + ::getpid() % 10'000; port < 32'767; ++port) {
        QTcpServer probe;
        if (probe.listen(QHostAddress::LocalHost, port))
            return QString::number(port);
    }
    return {};
}

} // namespace

class ProgramTest : public QObject {
    Q_OBJECT

private slots:
    void answersWithoutADisplay_data() {
        QTest::addColumn<QString>("option");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("answer");
        QTest::newRow("--help") << "--help" << 0 << "--transfer-port <port>";
        QTest::newRow("--version") << "--version" << 0 << "lx400d-simulator 1.03-2";
        QTest::newRow("a wrong option") << "--bogus" << 2 << "lx400d-simulator: Unknown option 'bogus'";
        QTest::newRow("a wrong number") << "--columns=0" << 2 << "--columns takes a number from 1 to 4096";
    }
    void answersWithoutADisplay() {
        QFETCH(const QString, option);
        QFETCH(const int, exitCode);
        QFETCH(const QString, answer);
        QProcess simulator;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.remove("DISPLAY");
        environment.insert("QT_QPA_PLATFORM", "xcb");
        simulator.setProcessEnvironment(environment);
        simulator.setProcessChannelMode(QProcess::MergedChannels);
        simulator.start(ORVISTA_SIMULATOR, {option});
        QVERIFY(simulator.waitForFinished());
        QCOMPARE(simulator.exitStatus(), QProcess::NormalExit);
        QCOMPARE(simulator.exitCode(), exitCode);
        const QString printed = QString::fromUtf8(simulator.readAll());
        QVERIFY2(printed.contains(answer), qPrintable(printed));
    }

    void tellsItsPortsBeforeAnythingElse() {
        const TemporaryFolder root;
        SimulatorProcess simulator({"--root", QString::fromStdString(root.path())});
        QVERIFY(simulator.lines().size() >= 3);
        QCOMPARE(simulator.lines()[0],
                 QStringLiteral("Modbus/TCP on 127.0.0.1:%1").arg(simulator.modbusPort()));
        QCOMPARE(simulator.lines()[1],
                 QStringLiteral("File transfer on 127.0.0.1:%1").arg(simulator.transferPort()));
        QCOMPARE(simulator.lines()[2], "Files in " + QString::fromStdString(root.path()));
        QCOMPARE(simulator.terminate(), 0);
    }

    void showsWhatIsUploadedAndSwitchedOn() {
        const TemporaryFolder project;
        const TemporaryFolder root;
        writeDeviceFiles(project);
        const QString picture = QString::fromStdString(project.file("panel.png"));
        const QStringList options{"--root",
                                  QString::fromStdString(root.path()),
                                  "--snapshot",
                                  picture,
                                  "--at",
                                  "500",
                                  "--transfer-port",
                                  freeLowPort()};
        {
            SimulatorProcess simulator(options);
            QVERIFY(simulator.waitForLine("^Picture written"));
            QCOMPARE(dotIn(picture, 3, 3), Led::Off);
            QCOMPARE(upload(project, simulator.transferPort()), 5);
            QVERIFY(simulator.waitForLine("The files are shown"));
            QVERIFY(simulator.waitForLine("^Picture written"));
            QVERIFY(setCoil(simulator.modbusPort(), 320, true));
            QVERIFY(simulator.waitForLine("Write Single Coil 320: on"));
            QVERIFY(simulator.waitForLine("^Picture written"));
            QCOMPARE(dotIn(picture, 3, 3), Led::Green);
            QCOMPARE(dotIn(picture, 8, 3), Led::Off);
            QVERIFY(setCoil(simulator.modbusPort(), 300, true));
            QVERIFY(simulator.waitForLine("^Picture written"));
            QCOMPARE(dotIn(picture, 3, 3), Led::Orange);
            QCOMPARE(QImage(picture).size(), QSize(128 * 8 + 24, 16 * 8 + 24));
            QCOMPARE(simulator.terminate(), 0);
        }
        // The files outlast the program, what was on does not.
        SimulatorProcess again(options);
        QVERIFY(again.waitForLine("^Picture written"));
        QCOMPARE(dotIn(picture, 3, 3), Led::Off);
        QVERIFY(setCoil(again.modbusPort(), 320, true));
        QVERIFY(again.waitForLine("^Picture written"));
        QCOMPARE(dotIn(picture, 3, 3), Led::Green);
    }

    void writesItsPictureWhenItEnds() {
        const TemporaryFolder root;
        writeDeviceFiles(root);
        const QString picture = QString::fromStdString(root.file("panel.png"));
        SimulatorProcess simulator({"--root", QString::fromStdString(root.path()), "--snapshot", picture});
        QVERIFY(setCoil(simulator.modbusPort(), 320, true));
        QVERIFY(!QFile::exists(picture));
        QCOMPARE(simulator.terminate(), 0);
        QVERIFY(simulator.waitForLine("^Picture written to "));
        QCOMPARE(dotIn(picture, 3, 3), Led::Green);
    }

    void failsAtTheFileAskedFor() {
        const TemporaryFolder project;
        const TemporaryFolder root;
        writeDeviceFiles(project);
        SimulatorProcess simulator({"--root", QString::fromStdString(root.path()), "--fail-file", "3",
                                    "--transfer-port", freeLowPort()});
        QCOMPARE(upload(project, simulator.transferPort()), 2);
        QVERIFY(std::filesystem::exists(root.file("ilmvar.def")));
        QVERIFY(!std::filesystem::exists(root.file("stdmsg.ilm")));
    }

    void refusesWhenAskedTo() {
        SimulatorProcess simulator({"--fault", "refuse"});
        QTcpSocket client;
        client.connectToHost(QHostAddress::LocalHost, simulator.modbusPort());
        QVERIFY(!client.waitForConnected(10'000));
        QCOMPARE(client.error(), QAbstractSocket::ConnectionRefusedError);
    }

    void answersExceptionsWhenAskedTo() {
        SimulatorProcess simulator({"--fault", "exception", "--exception", "2"});
        QVERIFY(setCoil(simulator.modbusPort(), 320, true));
        QVERIFY(simulator.waitForLine(R"(Write Single Coil 320: on \(answered with exception 2\))"));
    }

    void goesOnWithoutAPortThatIsTaken() {
        QTcpServer taken;
        QVERIFY(taken.listen(QHostAddress::LocalHost, 0));
        const QString port = QString::number(taken.serverPort());
        QProcess simulator;
        simulator.start(ORVISTA_SIMULATOR, {"--headless", "--modbus-port", port, "--transfer-port", "0"});
        QVERIFY(waitForText(simulator, "Files in "));
        QVERIFY2(output_.startsWith("Modbus/TCP not available on 127.0.0.1:" + port.toUtf8() + ": "),
                 output_);
        QVERIFY2(output_.contains("\nFile transfer on 127.0.0.1:"), output_);
        QVERIFY(!output_.contains("sysctl"));
        end(simulator);
    }

    void namesTheRemedyForAPortThatIsDenied() {
        QFile limit("/proc/sys/net/ipv4/ip_unprivileged_port_start");
        QVERIFY(limit.open(QIODevice::ReadOnly));
        const int firstFree = limit.readAll().trimmed().toInt();
        if (firstFree <= 1)
            QSKIP("this system denies no port to anybody");
        const QString port = QString::number(firstFree - 1);
        QStringList command{ORVISTA_SIMULATOR, "--headless", "--modbus-port", port, "--transfer-port", "0"};
        if (::geteuid() == 0)
            command = QStringList{"setpriv", "--bounding-set", "-net_bind_service", "--inh-caps",
                                  "-net_bind_service"} +
                      command;
        QProcess simulator;
        simulator.start(command.takeFirst(), command);
        QVERIFY(waitForText(simulator, "Files in "));
        QVERIFY2(output_.startsWith("Modbus/TCP not available on 127.0.0.1:" + port.toUtf8() + ": "),
                 output_);
        QVERIFY2(output_.contains("sudo sysctl net.ipv4.ip_unprivileged_port_start=" + port.toUtf8() + "\n"),
                 output_);
        QVERIFY2(output_.contains("\nFile transfer on 127.0.0.1:"), output_);
        end(simulator);
    }

    void refusesCommandLinesItCannotFollow_data() {
        QTest::addColumn<QStringList>("options");
        QTest::newRow("port") << QStringList{"--modbus-port", "65536"};
        QTest::newRow("no port") << QStringList{"--transfer-port", "many"};
        QTest::newRow("address") << QStringList{"--listen", "somewhere"};
        QTest::newRow("folder") << QStringList{"--root", "/nonexistent/folder"};
        QTest::newRow("columns") << QStringList{"--columns", "0"};
        QTest::newRow("wide") << QStringList{"--columns", "4097"};
        QTest::newRow("clock") << QStringList{"--clock", "noon"};
        QTest::newRow("fault") << QStringList{"--fault", "explode"};
        QTest::newRow("exception") << QStringList{"--exception", "12"};
        QTest::newRow("how") << QStringList{"--fail-how", "loudly"};
        QTest::newRow("unknown") << QStringList{"--colour"};
        QTest::newRow("argument") << QStringList{"file"};
    }
    void refusesCommandLinesItCannotFollow() {
        QFETCH(QStringList, options);
        QVERIFY(testing::outputOf(ORVISTA_SIMULATOR, QStringList{"--headless"} + options)
                    .startsWith("FAILED 2 "));
    }

    void takesItsOwnFolderWithIt() {
        QProcess simulator;
        simulator.start(ORVISTA_SIMULATOR,
                        {"--headless", "--log", "--modbus-port", "0", "--transfer-port", "0"});
        QVERIFY(waitForText(simulator, "The device holds no files"));
        const QString output = QString::fromUtf8(output_);
        const QString folder = output.section("Files in ", 1).section('\n', 0, 0);
        QVERIFY2(!folder.isEmpty() && QDir(folder).exists(), output_);
        end(simulator);
        QVERIFY(!QDir(folder).exists());
    }

    void explainsItself() {
        const QString help = testing::outputOf(ORVISTA_SIMULATOR, {"--headless", "--help"});
        for (const char* option : {"--modbus-port", "--transfer-port", "--listen", "--root", "--columns",
                                   "--headless", "--snapshot", "--at", "--fault", "--delay", "--fail-file"})
            QVERIFY2(help.contains(option), option);
    }

private:
    bool waitForText(QProcess& process, const QByteArray& text) {
        output_.clear();
        while (!output_.contains(text)) {
            if (!process.waitForReadyRead(10'000))
                return false;
            output_ += process.readAllStandardOutput();
        }
        return true;
    }

    static void end(QProcess& process) {
        process.terminate();
        QVERIFY(process.waitForFinished(10'000));
        QCOMPARE(process.exitCode(), 0);
    }

    QByteArray output_;
};

} // namespace orvista

QTEST_GUILESS_MAIN(orvista::ProgramTest)
#include "ProgramTest.moc"
