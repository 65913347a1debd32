#include "simulator/ModbusService.h"

#include "tests/simulator/Flood.h"
#include "tests/support/SimulatorProcess.h"

#include <QSignalSpy>
#include <QTcpSocket>
#include <QTest>
#include <arpa/inet.h>
#include <cerrno>
#include <memory>
#include <sys/socket.h>
#include <unistd.h>

namespace orvista {

namespace {

const QByteArray coilHundredOn = QByteArray::fromHex("010200000006FF050064FF00");
const QByteArray floatOneAtHundred = QByteArray::fromHex("01020000000BFF10006400020400003F80");

} // namespace

class ModbusServiceTest : public QObject {
    Q_OBJECT

private slots:
    void init() {
        faults_ = {};
        memory_ = {};
        service_ = std::make_unique<ModbusService>(memory_, faults_);
        QVERIFY(service_->start(QHostAddress::LocalHost, 0));
    }
    void cleanup() { service_.reset(); }

    void answersAndPerforms() {
        QTcpSocket client;
        QVERIFY(connectTo(client));
        client.write(coilHundredOn);
        QTRY_COMPARE(client.bytesAvailable(), 12);
        QCOMPARE(client.readAll(), coilHundredOn);
        QVERIFY(memory_.coil(100));
    }

    void dropsAClientThatLeavesItsAnswersUnread() {
        QTcpSocket client;
        QVERIFY(connectTo(client));
        client.setReadBufferSize(1);
        const QByteArray readTwoThousandCoils = QByteArray::fromHex("010200000006FF01000007D0");
        QVERIFY(testing::floods(client, readTwoThousandCoils.repeated(1000)));
        QVERIFY(stillServes());
    }

    void performsTheRequestOfAClientThatLeavesAtOnce() {
        QTcpSocket client;
        QVERIFY(connectTo(client));
        client.write(floatOneAtHundred);
        client.disconnectFromHost();
        QTRY_COMPARE(memory_.floatAt(100), 1.0F);
        QVERIFY(stillServes());
    }

    void putsTogetherRequestsThatArriveByteByByte() {
        QTcpSocket client;
        QVERIFY(connectTo(client));
        client.setSocketOption(QAbstractSocket::LowDelayOption, 1);
        for (const char byte : coilHundredOn) {
            client.write(&byte, 1);
            QVERIFY(client.waitForBytesWritten());
            QCoreApplication::processEvents();
        }
        QTRY_COMPARE(client.bytesAvailable(), 12);
    }

    void answersSeveralRequestsOfOnePacketInOrder() {
        QTcpSocket client;
        QVERIFY(connectTo(client));
        client.write(coilHundredOn + floatOneAtHundred + coilHundredOn);
        QTRY_COMPARE(client.bytesAvailable(), 36);
        QCOMPARE(client.readAll(),
                 coilHundredOn + QByteArray::fromHex("010200000006FF1000640002") + coilHundredOn);
    }

    void servesOthersWhileOneSendsHalfARequest() {
        QTcpSocket slow;
        QVERIFY(connectTo(slow));
        slow.write(coilHundredOn.left(9));
        QVERIFY(slow.waitForBytesWritten());
        QVERIFY(stillServes());
        slow.write(coilHundredOn.mid(9));
        QTRY_COMPARE(slow.bytesAvailable(), 12);
    }

    void endsConnectionsThatSendNoModbus() {
        QTcpSocket client;
        QVERIFY(connectTo(client));
        client.write("GET / HTTP/1.0\r\n\r\n");
        QTRY_COMPARE(client.state(), QAbstractSocket::UnconnectedState);
        QVERIFY(stillServes());
    }

    void holdsNoMoreThanItsClients() {
        std::vector<std::unique_ptr<QTcpSocket>> clients;
        for (int count = 0; count < 40; ++count) {
            clients.push_back(std::make_unique<QTcpSocket>());
            QVERIFY(connectTo(*clients.back()));
        }
        QTRY_COMPARE(clients.back()->state(), QAbstractSocket::UnconnectedState);
        clients.front()->write(coilHundredOn);
        QTRY_COMPARE(clients.front()->bytesAvailable(), 12);
        clients.clear();
        QTRY_VERIFY(stillServes());
    }

    void refusesConnectionsAndTakesThemAgain() {
        const quint16 port = service_->port();
        faults_.modbus = ModbusFault::Refuse;
        service_->applyFaults();
        QTcpSocket refused;
        refused.connectToHost(QHostAddress::LocalHost, port);
        QTRY_COMPARE(refused.error(), QAbstractSocket::ConnectionRefusedError);
        faults_.modbus = ModbusFault::None;
        service_->applyFaults();
        QCOMPARE(service_->port(), port);
        QVERIFY(stillServes());
    }

    void refusesFromTheStart() {
        faults_.modbus = ModbusFault::Refuse;
        ModbusService refusing(memory_, faults_);
        QVERIFY(refusing.start(QHostAddress::LocalHost, 0));
        QVERIFY(refusing.port() != 0);
        QTcpSocket client;
        client.connectToHost(QHostAddress::LocalHost, refusing.port());
        QTRY_COMPARE(client.error(), QAbstractSocket::ConnectionRefusedError);
    }

    void closesOrResetsAtOnce_data() {
        QTest::addColumn<int>("fault");
        QTest::addColumn<int>("end");
        QTest::newRow("close") << static_cast<int>(ModbusFault::CloseAtOnce) << 0;
        QTest::newRow("reset") << static_cast<int>(ModbusFault::Reset) << ECONNRESET;
    }
    void closesOrResetsAtOnce() {
        QFETCH(int, fault);
        QFETCH(int, end);
        faults_.modbus = static_cast<ModbusFault>(fault);
        // A bare socket: only that can tell an orderly end from a reset.
        const int client = ::socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(service_->port());
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        QCOMPARE(::connect(client, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        int seen = EAGAIN;
        const bool ended = QTest::qWaitFor([client, &seen] {
            char byte = 0;
            // An error is told only once.
            if (seen == EAGAIN)
                seen = ::recv(client, &byte, 1, MSG_DONTWAIT) == 0 ? 0 : errno;
            return seen != EAGAIN;
        });
        QVERIFY(ended);
        ::close(client);
        QCOMPARE(seen, end);
    }

    void answersWithTheExceptionAskedForAndPerformsNothing() {
        faults_.modbus = ModbusFault::Exception;
        faults_.exceptionCode = 6;
        QTcpSocket client;
        QVERIFY(connectTo(client));
        client.write(coilHundredOn);
        QTRY_COMPARE(client.bytesAvailable(), 9);
        QCOMPARE(client.readAll(), QByteArray::fromHex("010200000003FF8506"));
        QVERIFY(!memory_.coil(100));
    }

    void answersWithGarbage() {
        faults_.modbus = ModbusFault::Garbage;
        QTcpSocket client;
        QVERIFY(connectTo(client));
        client.write(coilHundredOn);
        QTRY_VERIFY(client.bytesAvailable() > 0);
        QVERIFY(!client.readAll().startsWith(QByteArray::fromHex("0102")));
        QVERIFY(!memory_.coil(100));
    }

    void readsAndStaysSilent() {
        faults_.modbus = ModbusFault::NoAnswer;
        const QSignalSpy logged(service_.get(), &ModbusService::logged);
        QTcpSocket client;
        QVERIFY(connectTo(client));
        client.write(coilHundredOn);
        QTRY_COMPARE(logged.count(), 1);
        faults_.modbus = ModbusFault::None;
        // Had the first request been answered, its answer would come before this one's.
        client.write(floatOneAtHundred);
        QTRY_COMPARE(client.bytesAvailable(), 12);
        QCOMPARE(client.readAll().at(7), '\x10');
        QVERIFY(!memory_.coil(100));
    }

    void performsLaterEvenForAClientThatIsGone() {
        faults_.answerDelay = 50;
        QTcpSocket client;
        QVERIFY(connectTo(client));
        QElapsedTimer clock;
        clock.start();
        client.write(coilHundredOn);
        client.disconnectFromHost();
        QTRY_VERIFY(memory_.coil(100));
        QVERIFY(clock.elapsed() >= 45);
    }

    void saysWhyAPortCannotBeHad() {
        ModbusService second(memory_, faults_);
        QVERIFY(!second.start(QHostAddress::LocalHost, service_->port()));
        QVERIFY(!second.errorText().isEmpty());
        QVERIFY(!second.mayNotBind());
    }

    void logsBytesAndWords() {
        QList<RequestRecord> records;
        connect(service_.get(), &ModbusService::logged, this,
                [&records](const RequestRecord& record) { records << record; });
        QTcpSocket client;
        QVERIFY(connectTo(client));
        client.write(coilHundredOn);
        client.write(QByteArray::fromHex("010200000002FF2B"));
        QTRY_COMPARE(records.size(), 2);
        QCOMPARE(records[0].words, "Write Single Coil 100: on");
        QCOMPARE(records[0].bytes, coilHundredOn);
        QCOMPARE(records[0].peer, QStringLiteral("127.0.0.1:%1").arg(client.localPort()));
        QVERIFY(records[0].time.isValid());
        QCOMPARE(records[1].words, "Function 43, which is not known (answered with exception 1)");
    }

    void satisfiesAnIndependentMaster() {
        const QString output = testing::outputOf(
            "/usr/bin/python3",
            {ORVISTA_MODBUS_JUDGE, QString::number(service_->port()), "coils:300:10100000000000000001",
             "read-coils:299:22", "coil:65535:1", "read-coils:65535:1", "registers:100:0,16256",
             "read-registers:99:4", "read-registers:65535:2", "coil:65535:0", "read-coils:65535:1"});
        QCOMPARE(output, "done\n"
                         "0101000000000000000010\n"
                         "done\n"
                         "1\n"
                         "done\n"
                         "0,0,16256,0\n"
                         "error 2\n"
                         "done\n"
                         "0\n");
        QCOMPARE(memory_.floatAt(100), 1.0F);
    }

private:
    bool connectTo(QTcpSocket& client) {
        client.connectToHost(QHostAddress::LocalHost, service_->port());
        return QTest::qWaitFor([&] { return client.state() == QAbstractSocket::ConnectedState; });
    }

    bool stillServes() {
        QTcpSocket client;
        if (!connectTo(client))
            return false;
        client.write(coilHundredOn);
        return QTest::qWaitFor([&] { return client.bytesAvailable() == 12; });
    }

    Faults faults_;
    DeviceMemory memory_;
    std::unique_ptr<ModbusService> service_;
};

} // namespace orvista

QTEST_GUILESS_MAIN(orvista::ModbusServiceTest)
#include "ModbusServiceTest.moc"
