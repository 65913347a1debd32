#include "link/forms/TesterClient.h"

#include "model/Windows1252.h"

#include <utility>

namespace orvista {

TesterClient::TesterClient(const Project& project, UpdateButtons& buttons, Messages& messages,
                           std::uint16_t port)
    : project_(project), client_(Winsock1, clock_, buttons, messages, port) {
    Winsock1.leadEventsTo(client_);
}

void TesterClient::updateEmergencyMessages(const std::string& startAddress,
                                           const std::array<bool, emergencyMessageCount>& on) {
    start(emergencyMessagesRequest(requestAddress(startAddress), on));
}

void TesterClient::updateRegularMessages(const std::string& startAddress,
                                         const std::array<bool, regularMessageCount>& on) {
    start(regularMessagesRequest(requestAddress(startAddress), on));
}

void TesterClient::updateCoil(const std::string& address, bool on) {
    start(coilRequest(requestAddress(address), on));
}

void TesterClient::updateRegister(const std::string& address, const std::string& value) {
    start(registerPairRequest(requestAddress(address), requestValue(value)));
}

void TesterClient::start(Frame frame) {
    client_.start(std::move(frame), utf8FromWindows1252(project_.IP));
}

} // namespace orvista
