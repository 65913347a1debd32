#include "link/forms/DisplayAcceptance.h"
#include "link/forms/TesterClient.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/ScriptedPeople.h"

#include <QTest>

#include <array>
#include <bit>
#include <optional>
#include <random>
#include <utility>

using namespace orvista;
using namespace orvista::testing;

namespace {

/// A Modbus server that is not ours, in a process of its own; reports every write it took.
class IndependentServer {
public:
    IndependentServer()
        : process_({ORVISTA_PYTHON, ORVISTA_MODBUS_SERVER}),
          port_(static_cast<quint16>(std::stoi(process_.readLine()))) {}

    quint16 port() const { return port_; }
    QString nextWrite() { return QString::fromStdString(process_.readLine()); }
    /// How it answers writes from now on. What it wrote before is to be read first: false where it is not.
    bool answerWrites(const std::string& manner) { return process_.ask(manner) == manner; }

private:
    ChildProcess process_;
    quint16 port_;
};

class Buttons final : public UpdateButtons {
public:
    void setEnabled(UpdateButton, bool enabled) override { enabled_ = enabled; }
    bool areEnabled() const { return enabled_; }

private:
    bool enabled_ = true;
};

template <std::size_t count>
QString bitList(const std::array<bool, count>& on) {
    QStringList bits;
    for (const bool bit : on)
        bits << (bit ? QStringLiteral("1") : QStringLiteral("0"));
    return bits.join(u',');
}

} // namespace

class IndependentServerTest : public QObject {
    Q_OBJECT
private slots:
    void init();
    void theExamplesMeanWhatTheyShould();
    void everyCheckBoxSwitchesItsOwnCoil();
    void randomRequestsMeanWhatTheyShould();
    void anAcceptanceSwitchesWhatItShould();
    void whatIsRefusedIsPutBackOnceItCanBe_data();
    void whatIsRefusedIsPutBackOnceItCanBe();
    void anEmergencyMessageThatWasNotConfirmedStays_data();
    void anEmergencyMessageThatWasNotConfirmedStays();

private:
    /// What the server took of the request that `ask` made.
    template <typename Ask>
    QString written(Ask ask) {
        ask(*client_);
        if (!QTest::qWaitFor([this] { return buttons_.areEnabled(); }))
            return QStringLiteral("the request does not end");
        return messages_.shown.empty() ? server_->nextWrite()
                                       : QString::fromStdString(messages_.shown.front().text);
    }
    AcceptanceRun newRun() const {
        return {displayItems(project_), [](const AcceptanceRun& /*run*/) { return true; }};
    }
    template <typename Bits>
    Bits randomBits() {
        Bits bits{};
        for (bool& bit : bits)
            bit = random_() % 2 == 1;
        return bits;
    }

    std::optional<IndependentServer> server_;
    Project project_;
    Buttons buttons_;
    ScriptedMessages messages_;
    std::optional<TesterClient> client_;
    std::mt19937 random_{502};
};

void IndependentServerTest::init() {
    server_.emplace();
    project_.IP = "127.0.0.1";
    client_.emplace(project_, buttons_, messages_, server_->port());
}

void IndependentServerTest::theExamplesMeanWhatTheyShould() {
    std::array<bool, emergencyMessageCount> emergency{};
    emergency[0] = emergency[2] = true;
    std::array<bool, regularMessageCount> regular{};
    regular[39] = true;
    QCOMPARE(written([&](TesterClient& client) { client.updateEmergencyMessages("300", emergency); }),
             QStringLiteral("coils 300 1,0,1,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0"));
    QCOMPARE(written([&](TesterClient& client) { client.updateRegularMessages("320", regular); }),
             QStringLiteral("coils 320 0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,"
                            "0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,1"));
    QCOMPARE(written([](TesterClient& client) { client.updateCoil("100", true); }),
             QStringLiteral("coils 100 1"));
    QCOMPARE(written([](TesterClient& client) { client.updateCoil("100", false); }),
             QStringLiteral("coils 100 0"));
    // 1 is 0x3F800000, 100 is 0x42C80000, -2.5 is 0xC0200000, 123.456 is 0x42F6E979; the low word comes
    // first.
    const std::pair<const char*, QString> floats[] = {{"1", QStringLiteral("0,16256")},
                                                      {"100", QStringLiteral("0,17096")},
                                                      {"-2.5", QStringLiteral("0,49184")},
                                                      {"123.456", QStringLiteral("59769,17142")}};
    for (const auto& [value, words] : floats)
        QCOMPARE(written([value = value](TesterClient& client) { client.updateRegister("100", value); }),
                 QStringLiteral("registers 100 ") + words);
    for (const char* address : {"0", "255", "256", "65535"})
        QCOMPARE(written([&](TesterClient& client) { client.updateCoil(address, true); }),
                 QStringLiteral("coils %1 1").arg(QLatin1String(address)));
}

void IndependentServerTest::everyCheckBoxSwitchesItsOwnCoil() {
    for (std::size_t box = 0; box < emergencyMessageCount; ++box) {
        std::array<bool, emergencyMessageCount> on{};
        on[box] = true;
        QCOMPARE(written([&](TesterClient& client) { client.updateEmergencyMessages("300", on); }),
                 QStringLiteral("coils 300 ") + bitList(on));
    }
    for (std::size_t box = 0; box < regularMessageCount; ++box) {
        std::array<bool, regularMessageCount> on{};
        on[box] = true;
        QCOMPARE(written([&](TesterClient& client) { client.updateRegularMessages("320", on); }),
                 QStringLiteral("coils 320 ") + bitList(on));
    }
}

void IndependentServerTest::randomRequestsMeanWhatTheyShould() {
    for (int round = 0; round < 25; ++round) {
        // The server refuses blocks that reach beyond its last address.
        const std::string address = std::to_string(random_() % 65'000);
        const QString shown = QString::fromStdString(address);
        const auto emergency = randomBits<std::array<bool, emergencyMessageCount>>();
        QCOMPARE(written([&](TesterClient& client) { client.updateEmergencyMessages(address, emergency); }),
                 QStringLiteral("coils %1 %2").arg(shown, bitList(emergency)));
        const auto regular = randomBits<std::array<bool, regularMessageCount>>();
        QCOMPARE(written([&](TesterClient& client) { client.updateRegularMessages(address, regular); }),
                 QStringLiteral("coils %1 %2").arg(shown, bitList(regular)));
        const int whole = static_cast<int>(random_() % 100'000) - 50'000;
        const auto bits = std::bit_cast<std::uint32_t>(static_cast<float>(whole));
        QCOMPARE(
            written([&](TesterClient& client) { client.updateRegister(address, std::to_string(whole)); }),
            QStringLiteral("registers %1 %2,%3").arg(shown).arg(bits & 0xFFFF).arg(bits >> 16));
    }
}

void IndependentServerTest::anAcceptanceSwitchesWhatItShould() {
    DisplayAcceptance acceptance("127.0.0.1", server_->port(), newRun());
    const auto isWaiting = [&] { return acceptance.run().state() == AcceptanceRun::State::Waiting; };
    acceptance.show({Kind::Regular, 0});
    QTRY_VERIFY(isWaiting());
    QCOMPARE(server_->nextWrite(), QStringLiteral("coils 320 1"));
    acceptance.write({{{Kind::Float, 0}, {0xE979, 0x42F6}}, {{Kind::Float, 1}, {0x0000, 0x3F80}}});
    QTRY_VERIFY(isWaiting());
    QCOMPARE(server_->nextWrite(), QStringLiteral("registers 100 59769,17142,0,16256"));
    acceptance.show({Kind::Emergency, 0});
    QTRY_VERIFY(isWaiting());
    QCOMPARE(server_->nextWrite(), QStringLiteral("registers 100 0,0,0,0"));
    QCOMPARE(server_->nextWrite(), QStringLiteral("coils 320 0"));
    QCOMPARE(server_->nextWrite(), QStringLiteral("coils 300 1"));
    acceptance.end();
    QTRY_VERIFY(acceptance.run().isOver());
    QCOMPARE(server_->nextWrite(), QStringLiteral("coils 300 0"));
    QVERIFY(acceptance.run().written().empty());
}

void IndependentServerTest::whatIsRefusedIsPutBackOnceItCanBe_data() {
    QTest::addColumn<QString>("exception");
    QTest::newRow("2") << QStringLiteral("exception 2, illegal data address");
    QTest::newRow("3") << QStringLiteral("exception 3, illegal data value");
    QTest::newRow("6") << QStringLiteral("exception 6, server device busy");
}

void IndependentServerTest::whatIsRefusedIsPutBackOnceItCanBe() {
    QFETCH(const QString, exception);
    DisplayAcceptance acceptance("127.0.0.1", server_->port(), newRun());
    acceptance.show({Kind::Emergency, 0});
    QTRY_VERIFY(acceptance.run().state() == AcceptanceRun::State::Waiting);
    QCOMPARE(server_->nextWrite(), QStringLiteral("coils 300 1"));
    QVERIFY(server_->answerWrites("exception " + std::string(QTest::currentDataTag())));
    acceptance.show({Kind::Regular, 0});
    QTRY_COMPARE(QString::fromStdString(acceptance.run().reason()),
                 QStringLiteral("writing coil 300: ") + exception);
    QVERIFY(server_->answerWrites("well"));
    QTRY_VERIFY(acceptance.run().isOver());
    QCOMPARE(server_->nextWrite(), QStringLiteral("coils 300 0"));
    QVERIFY(acceptance.run().written().empty());
    QVERIFY(server_->answerWrites("well")); // and nothing else was written
}

void IndependentServerTest::anEmergencyMessageThatWasNotConfirmedStays_data() {
    QTest::addColumn<QString>("reason");
    QTest::newRow("wrong transaction") << QStringLiteral("the display answers another request");
    QTest::newRow("wrong unit") << QStringLiteral("unit 254 answers instead of unit 255");
    QTest::newRow("cut off") << QStringLiteral("only 11 bytes of an answer within 3 s");
    QTest::newRow("silent") << QStringLiteral("no answer within 3 s");
}

void IndependentServerTest::anEmergencyMessageThatWasNotConfirmedStays() {
    QFETCH(const QString, reason);
    QVERIFY(server_->answerWrites(QTest::currentDataTag()));
    DisplayAcceptance acceptance("127.0.0.1", server_->port(), newRun());
    acceptance.show({Kind::Emergency, 0});
    QTRY_VERIFY_WITH_TIMEOUT(acceptance.run().isOver(), 20'000);
    QCOMPARE(QString::fromStdString(acceptance.run().reason()),
             QStringLiteral("writing coil 300: ") + reason);
    QCOMPARE(server_->nextWrite(), QStringLiteral("coils 300 1"));
    QVERIFY(server_->answerWrites("well")); // and nothing else was written
    const std::vector<WrittenItem> written = acceptance.run().written();
    QCOMPARE(written.size(), std::size_t{1}); // so that it is named, and offered
    QVERIFY(acceptance.run().items().at(written[0].place).item == Item(Kind::Emergency, 0));
}

QTEST_GUILESS_MAIN(IndependentServerTest)
#include "IndependentServerTest.moc"
