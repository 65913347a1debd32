#include "link/ModbusConnection.h"

namespace orvista {

std::vector<std::uint8_t> ModbusConnection::ask(const Frame& request) {
    const TcpConnection::Clock::time_point deadline = TcpConnection::Clock::now() + timeout_;
    std::vector<std::uint8_t> received;
    try {
        connection_.send(request, deadline);
        for (;;) {
            const auto more = connection_.receive(deadline);
            if (!more)
                throw answerTimedOut(request, received.size(), timeout_);
            if (more->empty())
                throw answerCutOff(request, received.size());
            received.insert(received.end(), more->begin(), more->end());
            if (const auto data = answerData(request, received))
                return {data->begin(), data->end()};
        }
    } catch (const ConnectionFailure& broken) {
        throw BadAnswer(request, broken.what());
    }
}

void readFromDisplay(const DisplayAddress& display, std::vector<DisplayItem>& items,
                     std::chrono::milliseconds timeout) {
    std::vector<DisplayItem> read = items;
    ModbusConnection connection(display, timeout);
    for (const ReadStep& step : readSteps(read))
        takeAnswer(step, connection.ask(step.request), read);
    items = std::move(read);
}

} // namespace orvista
