#include "simulator/SocketPair.h"

#include "simulator/ModbusRequests.h"

#include <stdexcept>
#include <winsock2.h>

namespace orvista {

namespace {

SOCKET tcpSocket() {
    return ::socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
}

/// A listening socket on a free port of the loopback address, which it leaves in `address`.
SOCKET listenOnLoopback(sockaddr_in& address) {
    address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const SOCKET listener = tcpSocket();
    auto* const plain = reinterpret_cast<sockaddr*>(&address);
    int size = sizeof address;
    if (::bind(listener, plain, size) != 0 || ::listen(listener, 1) != 0 ||
        ::getsockname(listener, plain, &size) != 0)
        address.sin_port = 0;
    return listener;
}

/// Whether both ends are one connection: anybody could have connected to the listening port.
bool areConnected(SOCKET one, SOCKET other) {
    sockaddr_in own{};
    sockaddr_in peer{};
    int size = sizeof own;
    return ::getsockname(one, reinterpret_cast<sockaddr*>(&own), &size) == 0 &&
           ::getpeername(other, reinterpret_cast<sockaddr*>(&peer), &size) == 0 &&
           own.sin_port == peer.sin_port;
}

} // namespace

// Windows has no socketpair, and no sockets before they are asked for; asking again only counts.
SocketPair::SocketPair() {
    WSADATA ignored;
    if (::WSAStartup(MAKEWORD(2, 2), &ignored) != 0)
        throw std::runtime_error("no sockets");
    sockaddr_in address;
    const SOCKET listener = listenOnLoopback(address);
    ends_[0] = tcpSocket();
    ends_[1] = INVALID_SOCKET;
    if (address.sin_port != 0 &&
        ::connect(ends_[0], reinterpret_cast<sockaddr*>(&address), sizeof address) == 0)
        ends_[1] = ::accept(listener, nullptr, nullptr);
    ::closesocket(listener);
    if (!areConnected(ends_[0], ends_[1])) {
        ::closesocket(ends_[0]);
        ::closesocket(ends_[1]);
        ::WSACleanup();
        throw std::runtime_error("no socket pair for the Modbus library");
    }
}

SocketPair::~SocketPair() {
    ::closesocket(ends_[0]);
    ::closesocket(ends_[1]);
    ::WSACleanup();
}

bool SocketPair::giveRequest(std::string_view frame) const {
    const int size = static_cast<int>(frame.size());
    return ::send(ends_[1], frame.data(), size, 0) == size && ::shutdown(ends_[1], SD_SEND) == 0;
}

std::string SocketPair::takeAnswer() const {
    // With its sending side shut, reading ends where the answer does.
    ::shutdown(ends_[0], SD_SEND);
    std::array<char, longestModbusFrame> bytes{};
    std::string answer;
    int size = 0;
    while (answer.size() < longestModbusFrame &&
           (size = ::recv(ends_[1], bytes.data(), static_cast<int>(bytes.size()), 0)) > 0)
        answer.append(bytes.data(), static_cast<std::size_t>(size));
    return answer;
}

} // namespace orvista
