#pragma once

#include "link/ModbusClient.h"
#include "link/TesterActions.h"
#include "link/forms/QtAlarmClock.h"
#include "link/forms/QtClientSocket.h"

namespace orvista {

/// Sends what the test page asks for to the project's device.
class TesterClient final : public TesterActions {
public:
    /// \param port another one than Modbus's own is for servers that may not bind that
    TesterClient(const Project& project, UpdateButtons& buttons, Messages& messages,
                 std::uint16_t port = ModbusClient::modbusPort);

    void giveWayTo(RunningTransfer& transfers) { client_.giveWayTo(transfers); }

    /// Each of these throws Overflow for an address or value that does not fit; nothing is sent then.
    void updateEmergencyMessages(const std::string& startAddress,
                                 const std::array<bool, emergencyMessageCount>& on) override;
    void updateRegularMessages(const std::string& startAddress,
                               const std::array<bool, regularMessageCount>& on) override;
    void updateCoil(const std::string& address, bool on) override;
    void updateRegister(const std::string& address, const std::string& value) override;

private:
    void start(Frame frame);

    const Project& project_;
    QtClientSocket Winsock1;
    QtAlarmClock clock_;
    ModbusClient client_;
};

} // namespace orvista
