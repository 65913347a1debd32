#pragma once

#include "link/DisplayAddress.h"
#include "link/DisplayFailure.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace orvista {

/// A connection that does not come about or breaks; `what()` is the system's description, or says that the
/// time is over.
class ConnectionFailure : public DisplayFailure {
public:
    using DisplayFailure::DisplayFailure;
};

/// "no connection within 3 s": what is said where nobody answers.
std::string noConnectionText(std::chrono::milliseconds timeout);

/// A TCP connection for programs without an event loop: no call waits longer than it is told.
class TcpConnection {
public:
    using Clock = std::chrono::steady_clock;

    /// Connects to the first of the host's addresses that answers. Only looking up a name may take longer
    /// than `timeout`: that is the system's. \throws ConnectionFailure
    TcpConnection(const DisplayAddress& to, std::chrono::milliseconds timeout);
    ~TcpConnection();
    TcpConnection(const TcpConnection&) = delete;
    TcpConnection& operator=(const TcpConnection&) = delete;

    /// \throws ConnectionFailure
    void send(std::span<const std::uint8_t> bytes, Clock::time_point deadline);
    /// What has come, some bytes; none when the other side has ended the connection, nothing when the
    /// deadline came first. \throws ConnectionFailure
    std::optional<std::vector<std::uint8_t>> receive(Clock::time_point deadline);

private:
    class Socket;

    std::unique_ptr<Socket> socket_;
};

} // namespace orvista
