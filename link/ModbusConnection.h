#pragma once

#include "link/ModbusAnswers.h"
#include "link/ModbusReader.h"
#include "link/TcpConnection.h"

namespace orvista {

/// Asks a display one thing after the other, and waits for each answer.
class ModbusConnection {
public:
    /// \param timeout for the connection, and for each answer
    /// \throws ConnectionFailure
    explicit ModbusConnection(const DisplayAddress& display,
                              std::chrono::milliseconds timeout = answerTimeout)
        : timeout_(timeout), connection_(display, timeout) {}

    /// What answerData() finds in the answer.
    /// \throws BadAnswer for a broken connection, too; the connection is of no more use then
    std::vector<std::uint8_t> ask(const Frame& request);

private:
    std::chrono::milliseconds timeout_;
    TcpConnection connection_;
};

/// Reads all items that have an address over one connection. When that fails the items are as they were.
/// \throws DisplayFailure
void readFromDisplay(const DisplayAddress& display, std::vector<DisplayItem>& items,
                     std::chrono::milliseconds timeout = answerTimeout);

} // namespace orvista
