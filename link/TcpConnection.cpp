#include "link/TcpConnection.h"

#include "link/SystemSocket.h"
#include "model/Numbers.h"

#include <algorithm>
#include <array>
#include <limits>
#include <string>

namespace orvista {

namespace {

using Clock = TcpConnection::Clock;
using systemsocket::Wanted;

[[noreturn]] void failConnection(int error) {
    throw ConnectionFailure(std::system_category().message(error));
}

using Addresses = std::unique_ptr<addrinfo, decltype(&freeaddrinfo)>;

Addresses lookUp(const DisplayAddress& to) {
    addrinfo hints{};
    hints.ai_family = AF_UNSPEC;
    hints.ai_socktype = SOCK_STREAM;
    hints.ai_flags = AI_NUMERICSERV;
    addrinfo* found = nullptr;
    if (const int error = getaddrinfo(to.host.c_str(), decimalText(to.port).c_str(), &hints, &found))
        throw ConnectionFailure(systemsocket::lookUpErrorText(error));
    return {found, &freeaddrinfo};
}

/// Bytes are char for the systems' calls.
const char* chars(const std::uint8_t* bytes) {
    return reinterpret_cast<const char*>(bytes);
}

} // namespace

/// A system's socket that never blocks, and what goes with it.
class TcpConnection::Socket {
public:
    explicit Socket(const addrinfo& address)
        : handle_(::socket(address.ai_family, address.ai_socktype, address.ai_protocol)) {
        if (handle_ == systemsocket::none)
            failConnection(systemsocket::lastError());
    }
    ~Socket() { systemsocket::closeHandle(handle_); }
    Socket(const Socket&) = delete;
    Socket& operator=(const Socket&) = delete;

    systemsocket::Handle handle() const { return handle_; }

    /// False when the deadline came first.
    bool connect(const addrinfo& address, Clock::time_point deadline) {
        if (!systemsocket::makeNonBlocking(handle_))
            failConnection(systemsocket::lastError());
        if (::connect(handle_, address.ai_addr, static_cast<socklen_t>(address.ai_addrlen)) == 0)
            return true;
        if (systemsocket::lastError() != systemsocket::inProgress)
            failConnection(systemsocket::lastError());
        if (!wait(Wanted::Writing, deadline))
            return false;
        int error = 0;
        socklen_t size = sizeof error;
        if (::getsockopt(handle_, SOL_SOCKET, SO_ERROR, reinterpret_cast<char*>(&error), &size) != 0)
            error = systemsocket::lastError();
        if (error != 0)
            failConnection(error);
        return true;
    }

    /// False when the deadline came first.
    bool wait(Wanted wanted, Clock::time_point deadline) const {
        constexpr std::int64_t longest = std::numeric_limits<int>::max();
        for (;;) {
            const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
            const int ready = systemsocket::wait(
                handle_, wanted, static_cast<int>(std::clamp<std::int64_t>(left, 0, longest)));
            if (ready < 0)
                failConnection(systemsocket::lastError());
            if (ready > 0 || left <= 0)
                return ready > 0;
        }
    }

private:
    [[no_unique_address, maybe_unused]] const systemsocket::Library library_{};
    systemsocket::Handle handle_;
};

TcpConnection::TcpConnection(const DisplayAddress& to, std::chrono::milliseconds timeout) {
    [[maybe_unused]] const systemsocket::Library library{};
    const Addresses addresses = lookUp(to);
    const Clock::time_point deadline = Clock::now() + timeout;
    std::string failure = noConnectionText(timeout);
    int untried = 0;
    for (const addrinfo* address = addresses.get(); address != nullptr; address = address->ai_next)
        ++untried;
    for (const addrinfo* address = addresses.get(); address != nullptr; address = address->ai_next) {
        const Clock::time_point now = Clock::now();
        try {
            auto socket = std::make_unique<Socket>(*address);
            // A silent address leaves time for the next.
            if (socket->connect(*address, now + (deadline - now) / untried--)) {
                socket_ = std::move(socket);
                return;
            }
        } catch (const ConnectionFailure& refused) {
            failure = refused.what();
        }
    }
    throw ConnectionFailure(failure);
}

TcpConnection::~TcpConnection() = default;

void TcpConnection::send(std::span<const std::uint8_t> bytes, Clock::time_point deadline) {
    while (!bytes.empty()) {
        const auto sent =
            ::send(socket_->handle(), chars(bytes.data()), bytes.size(), systemsocket::sendFlags);
        if (sent >= 0)
            bytes = bytes.subspan(static_cast<std::size_t>(sent));
        else if (systemsocket::lastError() != systemsocket::wouldBlock)
            failConnection(systemsocket::lastError());
        else if (!socket_->wait(Wanted::Writing, deadline))
            throw ConnectionFailure("the display does not accept data");
    }
}

std::optional<std::vector<std::uint8_t>> TcpConnection::receive(Clock::time_point deadline) {
    std::array<char, 512> buffer{};
    while (socket_->wait(Wanted::Reading, deadline)) {
        const auto size = ::recv(socket_->handle(), buffer.data(), buffer.size(), 0);
        if (size >= 0)
            return std::vector<std::uint8_t>(buffer.begin(), buffer.begin() + size);
        if (systemsocket::lastError() != systemsocket::wouldBlock)
            failConnection(systemsocket::lastError());
    }
    return std::nullopt;
}

std::string noConnectionText(std::chrono::milliseconds timeout) {
    return "no connection within " + secondsText(timeout);
}

} // namespace orvista
