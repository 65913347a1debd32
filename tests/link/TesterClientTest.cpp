#include "link/forms/TesterClient.h"

#include "model/Numbers.h"
#include "tests/support/ScriptedPeople.h"

#include <QNetworkProxy>
#include <QScopeGuard>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>

#ifdef _WIN32
#include <winsock2.h>
#else
#include <sys/socket.h>
#endif

#include <optional>
#include <vector>

using namespace orvista;
using namespace orvista::testing;

namespace {

/// A device on this machine: notes what each connection sent, and does what the test says on the way.
class Device : public QTcpServer {
public:
    explicit Device(quint16 port = 0) {
        isUp = listen(QHostAddress::LocalHost, port);
        connect(this, &QTcpServer::newConnection, this, &Device::accept);
    }

    bool isUp = false;
    std::vector<QByteArray> requests; ///< of the connections that have ended
    std::function<void(QTcpSocket&)> onConnection;
    std::function<void(QTcpSocket&)> onRequest;

private:
    void accept() {
        while (QTcpSocket* const client = nextPendingConnection()) {
            connect(client, &QTcpSocket::readyRead, this, [this, client] {
                if (onRequest)
                    onRequest(*client);
            });
            connect(client, &QTcpSocket::disconnected, this, [this, client] {
                if (client->isOpen())
                    requests.push_back(client->readAll());
                client->deleteLater();
            });
            if (onConnection)
                onConnection(*client);
        }
    }
};

class Buttons final : public UpdateButtons {
public:
    void setEnabled(UpdateButton button, bool enabled) override {
        states.at(static_cast<std::size_t>(button)) = enabled;
    }
    bool allEnabled() const { return states == std::array{true, true, true, true}; }
    bool allDisabled() const { return states == std::array{false, false, false, false}; }

    std::array<bool, 4> states = {true, true, true, true};
};

quint16 closedPort() {
    QTcpServer server;
    server.listen(QHostAddress::LocalHost);
    return server.serverPort();
}

void reset(const QTcpSocket& socket) {
    const linger atOnce{1, 0};
#ifdef _WIN32
    const auto descriptor = static_cast<SOCKET>(socket.socketDescriptor());
#else
    const auto descriptor = static_cast<int>(socket.socketDescriptor());
#endif
    ::setsockopt(descriptor, SOL_SOCKET, SO_LINGER, reinterpret_cast<const char*>(&atOnce), sizeof atOnce);
}

/// The client as the program makes it, but for the port.
struct Tester {
    explicit Tester(quint16 port, const char* host = "127.0.0.1") {
        project.IP = host;
        client.emplace(project, buttons, messages, port);
    }

    Project project;
    Buttons buttons;
    ScriptedMessages messages;
    std::optional<TesterClient> client;
};

struct RecordedEvents final : SocketEvents {
    void onConnected() override { events << QStringLiteral("connected"); }
    void onSendCompleted() override { events << QStringLiteral("sent"); }
    void onClosedByRemote() override { events << QStringLiteral("closed"); }
    void onError(int, const std::string& description) override {
        events << QStringLiteral("error ") + QString::fromStdString(description);
    }
    QStringList events;
};

} // namespace

class TesterClientTest : public QObject {
    Q_OBJECT
private slots:
    void everyRequestArrivesByteForByte();
    void theButtonsWaitForTheConnectionsEnd();
    void twentyRequestsInARow();
    void aRefusedConnectionShowsTheSocketsText();
    void anEmptyAddressShowsOneMessage();
    void aDeviceThatClosesAtOnce();
    void aDeviceThatResetsAtOnce();
    void aDeviceThatNeverAnswers();
    void aDeviceThatAnswersGarbage();
    void aResetInMidSendIsNoError();
    void theClientGoesWithARequestUnderWay();
    void anOverflowSendsNothingAndLeavesTheButtons();
    void proxiesAreNotAsked();
    void theAddressIsReadWhenTheButtonIsClicked();
    void aNameIsTriedAtEachOfItsAddresses();
    void modbusOwnPort();
    void theAlarmClockRingsOnce();
    void anAlarmMayBeSetAnewAndTakenBack();
    void anAlarmMayBeSetWhileItRings();
};

void TesterClientTest::everyRequestArrivesByteForByte() {
    Device device;
    QVERIFY(device.isUp);
    Tester tester(device.serverPort());
    std::array<bool, emergencyMessageCount> emergency{};
    emergency[0] = emergency[2] = true;
    std::array<bool, regularMessageCount> regular{};
    regular[39] = true;

    tester.client->updateEmergencyMessages("300", emergency);
    QTRY_VERIFY(tester.buttons.allEnabled());
    tester.client->updateRegularMessages("320", regular);
    QTRY_VERIFY(tester.buttons.allEnabled());
    tester.client->updateCoil("100", true);
    QTRY_VERIFY(tester.buttons.allEnabled());
    tester.client->updateRegister("100", "1");
    QTRY_COMPARE(device.requests.size(), std::size_t{4});
    QCOMPARE(device.requests[0], QByteArray::fromHex("01020000000AFF0F012C00140305 0000"));
    QCOMPARE(device.requests[1], QByteArray::fromHex("01020000000CFF0F01400028050000000080"));
    QCOMPARE(device.requests[2], QByteArray::fromHex("010200000006FF050064FF00"));
    QCOMPARE(device.requests[3], QByteArray::fromHex("01020000000BFF10006400020400003F80"));
    QVERIFY(tester.messages.shown.empty());
}

void TesterClientTest::theButtonsWaitForTheConnectionsEnd() {
    Device device;
    Tester tester(device.serverPort());
    tester.client->updateCoil("1", true);
    QVERIFY(tester.buttons.allDisabled());
    tester.client->updateCoil("2", true);
    QTRY_VERIFY(tester.buttons.allEnabled());
    QTRY_COMPARE(device.requests.size(), std::size_t{1});
    QCOMPARE(device.requests[0], QByteArray::fromHex("010200000006FF050001FF00"));
}

void TesterClientTest::twentyRequestsInARow() {
    Device device;
    Tester tester(device.serverPort());
    for (int address = 0; address < 20; ++address) {
        tester.client->updateCoil(std::to_string(address), true);
        QTRY_VERIFY(tester.buttons.allEnabled());
    }
    QTRY_COMPARE(device.requests.size(), std::size_t{20});
    for (int address = 0; address < 20; ++address) {
        QByteArray expected = QByteArray::fromHex("010200000006FF050000FF00");
        expected[9] = static_cast<char>(address);
        QCOMPARE(device.requests[static_cast<std::size_t>(address)], expected);
    }
}

void TesterClientTest::aRefusedConnectionShowsTheSocketsText() {
    Tester tester(closedPort());
    for (std::size_t attempt = 1; attempt <= 2; ++attempt) {
        tester.client->updateCoil("1", true);
        QTRY_COMPARE(tester.messages.shown.size(), attempt);
        QCOMPARE(tester.messages.shown.back().text, std::string("Connection refused"));
        QVERIFY(tester.messages.shown.back().icon == MessageIcon::None);
        QVERIFY(tester.buttons.allEnabled());
    }
}

void TesterClientTest::anEmptyAddressShowsOneMessage() {
    Tester tester(closedPort(), "");
    tester.client->updateCoil("1", true);
    QTRY_COMPARE(tester.messages.shown.size(), std::size_t{1});
    QVERIFY(!tester.messages.shown.front().text.empty());
    QVERIFY(tester.buttons.allEnabled());
}

void TesterClientTest::aDeviceThatClosesAtOnce() {
    Device device;
    device.onConnection = [](QTcpSocket& client) { client.close(); };
    Tester tester(device.serverPort());
    for (int attempt = 0; attempt < 5; ++attempt) {
        tester.client->updateCoil("1", true);
        QTRY_VERIFY(tester.buttons.allEnabled());
    }
    QVERIFY(tester.messages.shown.empty());
}

void TesterClientTest::aDeviceThatResetsAtOnce() {
    Device device;
    int connections = 0;
    device.onConnection = [&](QTcpSocket& client) {
        ++connections;
        reset(client);
        client.abort();
    };
    Tester tester(device.serverPort());
    for (int attempt = 1; attempt <= 5; ++attempt) {
        tester.client->updateCoil("1", true);
        QTRY_VERIFY(tester.buttons.allEnabled());
        QCOMPARE(connections, attempt);
    }
    QVERIFY(tester.messages.shown.empty());
}

void TesterClientTest::aDeviceThatNeverAnswers() {
    Device device;
    Tester tester(device.serverPort());
    tester.client->updateCoil("1", true);
    QTRY_VERIFY(tester.buttons.allEnabled());
    QTRY_COMPARE(device.requests.size(), std::size_t{1});
    QVERIFY(tester.messages.shown.empty());
}

void TesterClientTest::aDeviceThatAnswersGarbage() {
    Device device;
    Tester tester(device.serverPort());
    const std::vector<QByteArray> answers = {QByteArray::fromHex("010200000003FF8502"),
                                             QByteArray(100'000, '\xFF'),
                                             QByteArray("HTTP/1.0 400 Bad Request\r\n\r\n")};
    for (const QByteArray& answer : answers) {
        device.onConnection = device.onRequest = [&](QTcpSocket& client) { client.write(answer); };
        tester.client->updateCoil("1", true);
        QTRY_VERIFY(tester.buttons.allEnabled());
    }
    QTRY_COMPARE(device.requests.size(), answers.size());
    QCOMPARE(device.requests.back(), QByteArray::fromHex("010200000006FF050001FF00"));
    QVERIFY(tester.messages.shown.empty());
}

void TesterClientTest::aResetInMidSendIsNoError() {
    Device device;
    QTcpSocket* atDevice = nullptr;
    device.onConnection = [&](QTcpSocket& client) {
        atDevice = &client;
        client.setReadBufferSize(1);
    };
    RecordedEvents events;
    QtClientSocket socket;
    socket.leadEventsTo(events);
    socket.connectTo("127.0.0.1", device.serverPort());
    QTRY_VERIFY(atDevice && !events.events.isEmpty());
    // More than the buffers of both sides hold, so that the send cannot complete.
    socket.send(Frame(64u << 20, 0x55));
    QTRY_VERIFY(atDevice->bytesAvailable() > 0);
    reset(*atDevice);
    atDevice->abort();
    QTRY_COMPARE(events.events.last(), QStringLiteral("closed"));
    QCOMPARE(events.events, (QStringList{QStringLiteral("connected"), QStringLiteral("closed")}));
}

void TesterClientTest::theClientGoesWithARequestUnderWay() {
    Device device;
    {
        Tester tester(device.serverPort());
        tester.client->updateCoil("1", true);
        tester.client.reset();
        QVERIFY(tester.messages.shown.empty());
    }
    Tester next(device.serverPort());
    next.client->updateCoil("2", true);
    QTRY_VERIFY(next.buttons.allEnabled());
    QVERIFY(next.messages.shown.empty());
}

void TesterClientTest::anOverflowSendsNothingAndLeavesTheButtons() {
    Device device;
    Tester tester(device.serverPort());
    QVERIFY_THROWS_EXCEPTION(Overflow, tester.client->updateCoil("65536", true));
    QVERIFY_THROWS_EXCEPTION(Overflow, tester.client->updateRegister("100", "1e39"));
    QVERIFY_THROWS_EXCEPTION(Overflow, tester.client->updateEmergencyMessages("-1", {}));
    QVERIFY_THROWS_EXCEPTION(Overflow, tester.client->updateRegularMessages("1e9", {}));
    QVERIFY(tester.buttons.allEnabled());
    tester.client->updateCoil("7", true);
    QTRY_COMPARE(device.requests.size(), std::size_t{1});
    QCOMPARE(device.requests[0], QByteArray::fromHex("010200000006FF050007FF00"));
}

void TesterClientTest::proxiesAreNotAsked() {
    QNetworkProxy::setApplicationProxy(
        QNetworkProxy(QNetworkProxy::HttpProxy, QStringLiteral("127.0.0.1"), closedPort()));
    const auto restore = qScopeGuard([] { QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy); });
    Device device;
    device.setProxy(QNetworkProxy::NoProxy);
    Tester tester(device.serverPort());
    tester.client->updateCoil("1", true);
    QTRY_COMPARE(device.requests.size(), std::size_t{1});
    QVERIFY(tester.messages.shown.empty());
}

void TesterClientTest::theAddressIsReadWhenTheButtonIsClicked() {
    Device device;
    Tester tester(device.serverPort(), "nowhere");
    tester.project.IP = "127.0.0.1";
    tester.client->updateCoil("1", true);
    QTRY_COMPARE(device.requests.size(), std::size_t{1});
}

void TesterClientTest::aNameIsTriedAtEachOfItsAddresses() {
    // Listens on the IPv4 address only, while the name may stand for the IPv6 one too.
    Device device;
    Tester tester(device.serverPort(), "localhost");
    tester.client->updateCoil("1", true);
    QTRY_COMPARE(device.requests.size(), std::size_t{1});
    QVERIFY(tester.messages.shown.empty());

    Tester refused(closedPort(), "localhost");
    refused.client->updateCoil("1", true);
    QTRY_COMPARE(refused.messages.shown.size(), std::size_t{1});
}

void TesterClientTest::modbusOwnPort() {
    Device device(ModbusClient::modbusPort);
    if (!device.isUp)
        QSKIP("port 502 may not be bound here, or is in use");
    Tester tester(0);
    tester.client.emplace(tester.project, tester.buttons, tester.messages);
    tester.client->updateCoil("1", true);
    QTRY_COMPARE(device.requests.size(), std::size_t{1});
    QCOMPARE(device.requests[0], QByteArray::fromHex("010200000006FF050001FF00"));
}

void TesterClientTest::theAlarmClockRingsOnce() {
    QtAlarmClock clock;
    int rings = 0;
    const auto start = std::chrono::steady_clock::now();
    clock.set(std::chrono::milliseconds(50), [&] { ++rings; });
    QTRY_COMPARE(rings, 1);
    QVERIFY(std::chrono::steady_clock::now() - start >= std::chrono::milliseconds(45));
    QTest::qWait(100); // a second ring would come in this time
    QCOMPARE(rings, 1);
}

void TesterClientTest::anAlarmMayBeSetAnewAndTakenBack() {
    QtAlarmClock clock;
    QStringList rings;
    clock.set(std::chrono::milliseconds(1), [&] { rings << QStringLiteral("replaced"); });
    clock.set(std::chrono::milliseconds(2), [&] { rings << QStringLiteral("new"); });
    QTRY_VERIFY(!rings.isEmpty());
    clock.set(std::chrono::milliseconds(1), [&] { rings << QStringLiteral("taken back"); });
    clock.cancel();
    QtAlarmClock other;
    bool later = false;
    other.set(std::chrono::milliseconds(20), [&] { later = true; });
    QTRY_VERIFY(later);
    QCOMPARE(rings, QStringList(QStringLiteral("new")));
}

void TesterClientTest::anAlarmMayBeSetWhileItRings() {
    QtAlarmClock clock;
    int rings = 0;
    std::function<void()> ring = [&] {
        if (++rings < 3)
            clock.set(std::chrono::milliseconds(1), ring);
    };
    clock.set(std::chrono::milliseconds(1), ring);
    QTRY_COMPARE(rings, 3);
}

QTEST_GUILESS_MAIN(TesterClientTest)
#include "TesterClientTest.moc"
