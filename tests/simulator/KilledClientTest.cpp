#include "tests/support/SimulatorProcess.h"

#include <QDir>
#include <QTcpSocket>
#include <QTest>
#include <csignal>
#include <memory>
#include <vector>

namespace orvista {

using testing::SimulatorProcess;
using testing::TemporaryFolder;

namespace {

constexpr int timeoutMilliseconds = 10'000;

/// A client's control connection, greeted or turned away.
class Visitor {
public:
    explicit Visitor(quint16 port) { socket_.connectToHost(QHostAddress::LocalHost, port); }

    bool isGreeted() {
        while (!socket_.canReadLine())
            if (!socket_.waitForReadyRead(timeoutMilliseconds))
                return false;
        return socket_.readLine().startsWith("220");
    }

    /// Once it returns there is room for another client.
    void leave() {
        socket_.write("QUIT\r\n");
        while (socket_.state() != QAbstractSocket::UnconnectedState)
            if (!socket_.waitForDisconnected(timeoutMilliseconds))
                return;
    }

private:
    QTcpSocket socket_;
};

/// A process that stands still as long as this object stands.
class Stopped {
public:
    explicit Stopped(qint64 process) : process_(static_cast<pid_t>(process)) { ::kill(process_, SIGSTOP); }
    ~Stopped() { ::kill(process_, SIGCONT); }
    Stopped(const Stopped&) = delete;
    Stopped& operator=(const Stopped&) = delete;

private:
    pid_t process_;
};

/// The device takes eight clients. With seven that stay, it greets another only while there is no further
/// one.
bool isWithoutFurtherClient(quint16 port) {
    Visitor visitor(port);
    const bool isGreeted = visitor.isGreeted();
    visitor.leave();
    return isGreeted;
}

} // namespace

class KilledClientTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() {
        simulator_ =
            std::make_unique<SimulatorProcess>(QStringList{"--root", QString::fromStdString(root_.path())});
        for (int count = 0; count < 7; ++count) {
            visitors_.push_back(std::make_unique<Visitor>(simulator_->transferPort()));
            QVERIFY(visitors_.back()->isGreeted());
        }
    }

    void leavesNoHalfFile_data() {
        QTest::addColumn<int>("signal");
        QTest::addColumn<QString>("endsFirst");
        QTest::newRow("killed, its data ends first") << SIGKILL << "data";
        QTest::newRow("killed, its control ends first") << SIGKILL << "control";
        QTest::newRow("ended, its data ends first") << SIGTERM << "data";
        QTest::newRow("ended, its control ends first") << SIGTERM << "control";
    }
    void leavesNoHalfFile() {
        QFETCH(const int, signal);
        QFETCH(const QString, endsFirst);
        const quint16 port = simulator_->transferPort();
        for (int attempt = 0; attempt < 4; ++attempt) {
            QProcess client;
            client.start("/usr/bin/python3", {ORVISTA_HALF_UPLOAD, QString::number(port), endsFirst});
            while (!client.canReadLine())
                QVERIFY(client.waitForReadyRead(timeoutMilliseconds));
            QCOMPARE(client.readLine(), "sent\n");
            QVERIFY(!isWithoutFurtherClient(port));
            {
                // A busy machine may take a break between the ends of the two connections.
                const Stopped device(simulator_->id());
                QCOMPARE(::kill(static_cast<pid_t>(client.processId()), signal), 0);
                QVERIFY(client.waitForFinished(timeoutMilliseconds));
            }
            QCOMPARE(client.exitStatus(), QProcess::CrashExit);
            QTRY_VERIFY_WITH_TIMEOUT(isWithoutFurtherClient(port), timeoutMilliseconds);
            QCOMPARE(QDir(QString::fromStdString(root_.path())).entryList(QDir::Files), QStringList());
        }
    }

private:
    const TemporaryFolder root_;
    std::unique_ptr<SimulatorProcess> simulator_;
    std::vector<std::unique_ptr<Visitor>> visitors_;
};

} // namespace orvista

QTEST_GUILESS_MAIN(orvista::KilledClientTest)
#include "KilledClientTest.moc"
