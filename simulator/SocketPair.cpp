#include "simulator/SocketPair.h"

#include "simulator/ModbusRequests.h"

#include <stdexcept>
#include <sys/socket.h>
#include <unistd.h>

namespace orvista {

SocketPair::SocketPair() {
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends_.data()) != 0)
        throw std::runtime_error("no socket pair for the Modbus library");
}

SocketPair::~SocketPair() {
    ::close(ends_[0]);
    ::close(ends_[1]);
}

bool SocketPair::giveRequest(std::string_view frame) const {
    const ssize_t sent = ::send(ends_[1], frame.data(), frame.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
    return sent == static_cast<ssize_t>(frame.size()) && ::shutdown(ends_[1], SHUT_WR) == 0;
}

std::string SocketPair::takeAnswer() const {
    std::array<char, longestModbusFrame> answer{};
    const ssize_t size = ::recv(ends_[1], answer.data(), answer.size(), MSG_DONTWAIT);
    return size > 0 ? std::string(answer.data(), static_cast<std::size_t>(size)) : std::string();
}

} // namespace orvista
