#pragma once

#include "link/DisplayAddress.h"
#include "link/ModbusFrames.h"
#include "link/RunningTransfer.h"
#include "model/People.h"

#include <chrono>
#include <functional>
#include <string>

namespace orvista {

/// What a socket tells. It tells nothing more after close().
class SocketEvents {
public:
    virtual ~SocketEvents() = default;
    virtual void onConnected() = 0;
    /// Every byte of the last send has left.
    virtual void onSendCompleted() = 0;
    /// The remote side closed or reset a connection that stood.
    virtual void onClosedByRemote() = 0;
    /// \param description the socket layer's own text, UTF-8
    virtual void onError(int number, const std::string& description) = 0;
};

/// A TCP client socket. Events may come during a call as well as after it. Nothing is ever read from it.
class ClientSocket {
public:
    virtual ~ClientSocket() = default;
    virtual void connectTo(const std::string& host, std::uint16_t port) = 0;
    virtual void send(const Frame& bytes) = 0;
    virtual void close() = 0;
};

/// Rings once.
class AlarmClock {
public:
    virtual ~AlarmClock() = default;
    /// Replaces an alarm that was set before.
    virtual void set(std::chrono::milliseconds after, std::function<void()> ring) = 0;
    virtual void cancel() = 0;
};

/// The Update buttons of the test page, in the order in which they are disabled and enabled.
enum class UpdateButton { btnEmgMsgUpdate, btnRegMsgUpdate, cmdUpdateReg, cmdUpdateCoil };

class UpdateButtons {
public:
    virtual ~UpdateButtons() = default;
    virtual void setEnabled(UpdateButton button, bool enabled) = 0;
};

/// One-shot Modbus/TCP writer: every request goes out on a connection of its own, which is closed as soon as
/// the last byte has left. The answer is never read. The buttons are disabled from the click until the
/// connection has ended, so that the one pending frame is never overwritten.
class ModbusClient final : public SocketEvents {
public:
    static constexpr std::uint16_t modbusPort = modbusTcp.port;
    /// An address where nobody answers would otherwise hold the buttons for minutes.
    static constexpr std::chrono::milliseconds connectTimeout{10'000};

    /// The socket's events are to be led to this object by whoever makes both.
    ModbusClient(ClientSocket& socket, AlarmClock& clock, UpdateButtons& buttons, Messages& messages,
                 std::uint16_t port = modbusPort);
    ~ModbusClient() override;
    ModbusClient(const ModbusClient&) = delete;
    ModbusClient& operator=(const ModbusClient&) = delete;

    /// From now on a failure is shown after a running transfer, not over it. \param transfers must outlast
    /// this
    void giveWayTo(RunningTransfer& transfers) { transfers_ = &transfers; }

    /// Sends `frame` to `host` (as typed, UTF-8). Does nothing while another request is under way.
    void start(Frame frame, const std::string& host);

    void onConnected() override;
    void onSendCompleted() override;
    void onClosedByRemote() override;
    void onError(int number, const std::string& description) override;

private:
    /// Reporting: an error text is on the screen, whose box lets other events in, or waits to be.
    enum class State { Idle, Connecting, Sending, Reporting };

    void finish();
    void fail(const std::string& description);
    void report(const std::string& description);
    void enableButtons(bool enabled);

    ClientSocket& socket_;
    AlarmClock& clock_;
    UpdateButtons& buttons_;
    Messages& messages_;
    std::uint16_t port_;
    RunningTransfer* transfers_ = nullptr;
    State state_ = State::Idle;
    Frame PendingFrame;
};

} // namespace orvista
