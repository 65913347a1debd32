#include "link/ModbusClient.h"

#include <utility>

namespace orvista {

ModbusClient::ModbusClient(ClientSocket& socket, AlarmClock& clock, UpdateButtons& buttons,
                           Messages& messages, std::uint16_t port)
    : socket_(socket), clock_(clock), buttons_(buttons), messages_(messages), port_(port) {}

ModbusClient::~ModbusClient() {
    clock_.cancel();
}

void ModbusClient::start(Frame frame, const std::string& host) {
    if (state_ != State::Idle)
        return;
    PendingFrame = std::move(frame);
    enableButtons(false);
    state_ = State::Connecting;
    clock_.set(connectTimeout, [this] { fail("The attempt to connect timed out"); });
    // The connection may fail before this returns, so nothing may follow it.
    socket_.connectTo(host, port_);
}

void ModbusClient::onConnected() {
    if (state_ != State::Connecting)
        return;
    clock_.cancel();
    state_ = State::Sending;
    socket_.send(PendingFrame);
}

void ModbusClient::onSendCompleted() {
    if (state_ == State::Sending)
        finish();
}

void ModbusClient::onClosedByRemote() {
    if (state_ == State::Connecting || state_ == State::Sending)
        finish();
}

void ModbusClient::onError(int, const std::string& description) {
    if (state_ == State::Connecting || state_ == State::Sending)
        fail(description);
}

void ModbusClient::finish() {
    clock_.cancel();
    socket_.close();
    state_ = State::Idle;
    enableButtons(true);
}

void ModbusClient::fail(const std::string& description) {
    state_ = State::Reporting;
    clock_.cancel();
    if (transfers_)
        transfers_->afterwards([this, description] { report(description); });
    else
        report(description);
}

void ModbusClient::report(const std::string& description) {
    messages_.show(MessageIcon::None, description);
    finish();
}

void ModbusClient::enableButtons(bool enabled) {
    for (const UpdateButton button : {UpdateButton::btnEmgMsgUpdate, UpdateButton::btnRegMsgUpdate,
                                      UpdateButton::cmdUpdateReg, UpdateButton::cmdUpdateCoil})
        buttons_.setEnabled(button, enabled);
}

} // namespace orvista
