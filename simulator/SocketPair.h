#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace orvista {

/// Two connected sockets, closed with the object: the library's and ours.
class SocketPair {
public:
    /// \throws std::runtime_error
    SocketPair();
    ~SocketPair();
    SocketPair(const SocketPair&) = delete;
    SocketPair& operator=(const SocketPair&) = delete;

    int libraryEnd() const { return static_cast<int>(ends_[0]); }
    /// Sends all that the library will ever read. Frames fit into a socket's buffer, so nothing waits.
    bool giveRequest(std::string_view frame) const;
    /// What the library has sent; it sends no more afterwards.
    std::string takeAnswer() const;

private:
#ifdef _WIN32
    using Socket = std::uintptr_t;
#else
    using Socket = int;
#endif
    std::array<Socket, 2> ends_{};
};

} // namespace orvista
