#include "link/ModbusClient.h"

#include "tests/support/ScriptedPeople.h"

#include <gmock/gmock.h>

#include <optional>
#include <string>
#include <vector>

namespace orvista {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Writes down what the client does, in order.
struct Journal {
    std::vector<std::string> lines;
};

class ScriptedSocket final : public ClientSocket {
public:
    explicit ScriptedSocket(Journal& journal) : journal_(journal) {}
    void connectTo(const std::string& host, std::uint16_t port) override {
        journal_.lines.push_back("connect " + host + ":" + std::to_string(port));
        if (duringConnect)
            duringConnect();
    }
    void send(const Frame& bytes) override {
        journal_.lines.push_back("send " + std::to_string(bytes.size()));
        sent.push_back(bytes);
        if (duringSend)
            duringSend();
    }
    void close() override { journal_.lines.push_back("close"); }

    std::function<void()> duringConnect;
    std::function<void()> duringSend;
    std::vector<Frame> sent;

private:
    Journal& journal_;
};

class ScriptedClock final : public AlarmClock {
public:
    void set(std::chrono::milliseconds after, std::function<void()> ring) override {
        after_ = after;
        ring_ = std::move(ring);
    }
    void cancel() override { ring_ = nullptr; }
    bool isSet() const { return ring_ != nullptr; }
    void advance(std::chrono::milliseconds elapsed) {
        after_ -= elapsed;
        if (!ring_ || after_ > std::chrono::milliseconds(0))
            return;
        const auto ring = std::exchange(ring_, nullptr);
        ring();
    }

private:
    std::chrono::milliseconds after_{0};
    std::function<void()> ring_;
};

class RecordedButtons final : public UpdateButtons {
public:
    explicit RecordedButtons(Journal& journal) : journal_(journal) {}
    void setEnabled(UpdateButton button, bool enabled) override {
        static constexpr std::array names = {"btnEmgMsgUpdate", "btnRegMsgUpdate", "cmdUpdateReg",
                                             "cmdUpdateCoil"};
        const auto index = static_cast<std::size_t>(button);
        journal_.lines.push_back(std::string(names.at(index)) + (enabled ? " on" : " off"));
        states.at(index) = enabled;
    }
    bool allEnabled() const { return states == std::array{true, true, true, true}; }
    bool allDisabled() const { return states == std::array{false, false, false, false}; }

    std::array<bool, 4> states = {true, true, true, true};

private:
    Journal& journal_;
};

/// Shows messages as the program does: other events come in while the box is open.
class OpenBox final : public Messages {
public:
    void show(MessageIcon icon, const std::string& text) override {
        shown.push_back({icon, text});
        if (whileShown)
            whileShown();
    }
    bool askYesNo(const std::string&) override { throw std::logic_error("unexpected question"); }
    Answer askYesNoCancel(const std::string&) override { throw std::logic_error("unexpected question"); }

    std::vector<testing::ScriptedMessages::Shown> shown;
    std::function<void()> whileShown;
};

class ModbusClientTest : public ::testing::Test {
protected:
    void click() { client.start(coilRequest(100, true), "device"); }
    /// No request is under way any more.
    void expectTheNextClickToConnect() {
        takeLines();
        socket.duringConnect = nullptr;
        click();
        EXPECT_THAT(takeLines(), Contains("connect device:502"));
    }
    std::vector<std::string> takeLines() { return std::exchange(journal.lines, {}); }

    Journal journal;
    ScriptedSocket socket{journal};
    ScriptedClock clock;
    RecordedButtons buttons{journal};
    OpenBox messages;
    ModbusClient client{socket, clock, buttons, messages};
};

TEST_F(ModbusClientTest, ARequestGoesOutAndTheConnectionCloses) {
    click();
    EXPECT_THAT(takeLines(), ElementsAre("btnEmgMsgUpdate off", "btnRegMsgUpdate off", "cmdUpdateReg off",
                                         "cmdUpdateCoil off", "connect device:502"));
    client.onConnected();
    EXPECT_THAT(takeLines(), ElementsAre("send 12"));
    EXPECT_TRUE(buttons.allDisabled());
    client.onSendCompleted();
    EXPECT_THAT(takeLines(), ElementsAre("close", "btnEmgMsgUpdate on", "btnRegMsgUpdate on",
                                         "cmdUpdateReg on", "cmdUpdateCoil on"));
    EXPECT_THAT(socket.sent, ElementsAre(coilRequest(100, true)));
    EXPECT_THAT(messages.shown, IsEmpty());
    EXPECT_FALSE(clock.isSet());
}

TEST_F(ModbusClientTest, RefusedShowsTheSocketsTextOnce) {
    click();
    client.onError(111, "Connection refused");
    EXPECT_THAT(messages.shown,
                ElementsAre(testing::ScriptedMessages::Shown{MessageIcon::None, "Connection refused"}));
    EXPECT_EQ(takeLines().at(5), "close");
    EXPECT_TRUE(buttons.allEnabled());
    client.onError(111, "late");
    client.onClosedByRemote();
    EXPECT_EQ(messages.shown.size(), 1u);
}

TEST_F(ModbusClientTest, ConnectionThatFailsWithinTheCall) {
    socket.duringConnect = [this] { client.onError(101, "Network is unreachable"); };
    click();
    EXPECT_EQ(messages.shown.size(), 1u);
    EXPECT_TRUE(buttons.allEnabled());
    EXPECT_FALSE(clock.isSet());
    expectTheNextClickToConnect();
}

TEST_F(ModbusClientTest, UnknownName) {
    click();
    client.onError(1, "Host not found");
    EXPECT_EQ(messages.shown.front().text, "Host not found");
    EXPECT_TRUE(buttons.allEnabled());
}

TEST_F(ModbusClientTest, AnAttemptEndsAfterTenSeconds) {
    click();
    clock.advance(std::chrono::milliseconds(9'999));
    EXPECT_THAT(messages.shown, IsEmpty());
    EXPECT_TRUE(buttons.allDisabled());
    clock.advance(std::chrono::milliseconds(1));
    EXPECT_EQ(messages.shown.size(), 1u);
    EXPECT_FALSE(messages.shown.front().text.empty());
    EXPECT_TRUE(buttons.allEnabled());
    expectTheNextClickToConnect();
}

TEST_F(ModbusClientTest, ConnectionThatComesUpUnderTheTimeoutsBoxIsNotUsed) {
    messages.whileShown = [this] {
        EXPECT_TRUE(buttons.allDisabled());
        client.onConnected();
        client.onError(111, "late");
        click();
    };
    click();
    clock.advance(ModbusClient::connectTimeout);
    EXPECT_THAT(socket.sent, IsEmpty());
    EXPECT_EQ(messages.shown.size(), 1u);
    EXPECT_TRUE(buttons.allEnabled());
}

TEST_F(ModbusClientTest, AStandingConnectionIsNotTimed) {
    click();
    client.onConnected();
    EXPECT_FALSE(clock.isSet());
}

TEST_F(ModbusClientTest, RemoteClosesBeforeTheRequestIsSent) {
    click();
    client.onClosedByRemote();
    EXPECT_THAT(messages.shown, IsEmpty());
    EXPECT_TRUE(buttons.allEnabled());
    EXPECT_THAT(socket.sent, IsEmpty());
}

TEST_F(ModbusClientTest, RemoteResetsInMidSend) {
    socket.duringSend = [this] { client.onClosedByRemote(); };
    click();
    client.onConnected();
    EXPECT_THAT(messages.shown, IsEmpty());
    EXPECT_TRUE(buttons.allEnabled());
    client.onSendCompleted();
    EXPECT_EQ(std::ranges::count(journal.lines, "close"), 1);
}

TEST_F(ModbusClientTest, ErrorWhileSending) {
    click();
    client.onConnected();
    client.onError(32, "Network dropped");
    EXPECT_EQ(messages.shown.size(), 1u);
    EXPECT_TRUE(buttons.allEnabled());
}

TEST_F(ModbusClientTest, ASecondClickCannotOverwriteThePendingFrame) {
    click();
    client.start(coilRequest(101, false), "other");
    client.onConnected();
    EXPECT_THAT(socket.sent, ElementsAre(coilRequest(100, true)));
}

TEST_F(ModbusClientTest, EventsWhileIdleDoNothing) {
    client.onConnected();
    client.onSendCompleted();
    client.onClosedByRemote();
    client.onError(5, "stray");
    EXPECT_THAT(journal.lines, IsEmpty());
    EXPECT_THAT(messages.shown, IsEmpty());
}

TEST_F(ModbusClientTest, TwentyRequestsInARowOnConnectionsOfTheirOwn) {
    for (std::uint16_t address = 0; address < 20; ++address) {
        client.start(coilRequest(address, true), "device");
        client.onConnected();
        client.onSendCompleted();
        ASSERT_TRUE(buttons.allEnabled());
    }
    ASSERT_EQ(socket.sent.size(), 20u);
    for (std::uint16_t address = 0; address < 20; ++address)
        EXPECT_EQ(socket.sent[address], coilRequest(address, true));
    EXPECT_EQ(std::ranges::count(journal.lines, "close"), 20);
}

TEST_F(ModbusClientTest, AFailureIsTheEndOfTheConnectAlarm) {
    messages.whileShown = [this] {
        EXPECT_FALSE(clock.isSet());
        clock.advance(ModbusClient::connectTimeout);
    };
    click();
    client.onError(111, "Connection refused");
    EXPECT_FALSE(clock.isSet());
    clock.advance(ModbusClient::connectTimeout);
    EXPECT_EQ(messages.shown.size(), 1u);
}

TEST_F(ModbusClientTest, AFailureWaitsForTheEndOfARunningTransfer) {
    RunningTransfer transfers;
    client.giveWayTo(transfers);
    messages.whileShown = [this] { journal.lines.push_back("box"); };
    click();
    transfers.during([&] {
        clock.advance(ModbusClient::connectTimeout);
        client.onError(111, "late");
        EXPECT_THAT(messages.shown, IsEmpty());
        EXPECT_TRUE(buttons.allDisabled());
        takeLines();
    });
    EXPECT_THAT(takeLines(), ElementsAre("box", "close", "btnEmgMsgUpdate on", "btnRegMsgUpdate on",
                                         "cmdUpdateReg on", "cmdUpdateCoil on"));
    EXPECT_EQ(messages.shown.size(), 1u);
    expectTheNextClickToConnect();
}

TEST_F(ModbusClientTest, WithoutARunningTransferAFailureShowsAtOnce) {
    RunningTransfer transfers;
    client.giveWayTo(transfers);
    click();
    client.onError(111, "Connection refused");
    EXPECT_EQ(messages.shown.size(), 1u);
    EXPECT_TRUE(buttons.allEnabled());
}

TEST(ModbusClient, GoneWithARequestUnderWayLeavesNoAlarm) {
    Journal journal;
    ScriptedSocket socket{journal};
    ScriptedClock clock;
    RecordedButtons buttons{journal};
    OpenBox messages;
    {
        ModbusClient client{socket, clock, buttons, messages};
        client.start(coilRequest(1, true), "device");
        EXPECT_TRUE(clock.isSet());
    }
    EXPECT_FALSE(clock.isSet());
    clock.advance(ModbusClient::connectTimeout);
    EXPECT_THAT(messages.shown, IsEmpty());
}

TEST(ModbusClient, PortIsAValueOfTheConstructor) {
    Journal journal;
    ScriptedSocket socket{journal};
    ScriptedClock clock;
    RecordedButtons buttons{journal};
    OpenBox messages;
    ModbusClient client{socket, clock, buttons, messages, 1502};
    client.start(coilRequest(1, true), "::1");
    EXPECT_EQ(journal.lines.back(), "connect ::1:1502");
}

} // namespace
} // namespace orvista
