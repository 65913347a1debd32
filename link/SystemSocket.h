#pragma once

#ifdef _WIN32
#include <winsock2.h>
#include <ws2tcpip.h>
#else
#include <cerrno>
#include <fcntl.h>
#include <netdb.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>
#endif

#include <string>
#include <system_error>

/// Where the sockets of the systems differ. For implementations only: it brings the systems' headers along.
namespace orvista::systemsocket {

enum class Wanted { Reading, Writing };

#ifdef _WIN32
using Handle = SOCKET;
inline constexpr Handle none = INVALID_SOCKET;
inline constexpr int sendFlags = 0;
inline constexpr int wouldBlock = WSAEWOULDBLOCK;
inline constexpr int inProgress = WSAEWOULDBLOCK;

inline int lastError() {
    return WSAGetLastError();
}

inline void closeHandle(Handle socket) {
    closesocket(socket);
}

inline bool makeNonBlocking(Handle socket) {
    u_long yes = 1;
    return ioctlsocket(socket, FIONBIO, &yes) == 0;
}

/// Positive when the socket is ready, 0 when the time is over, negative for an error.
inline int wait(Handle socket, Wanted wanted, int milliseconds) {
    fd_set ready;
    fd_set failed; // where an attempt to connect that failed shows
    FD_ZERO(&ready);
    FD_ZERO(&failed);
    FD_SET(socket, &ready);
    FD_SET(socket, &failed);
    timeval timeout{milliseconds / 1000, milliseconds % 1000 * 1000};
    return wanted == Wanted::Reading ? select(0, &ready, nullptr, &failed, &timeout)
                                     : select(0, nullptr, &ready, &failed, &timeout);
}

inline std::string lookUpErrorText(int error) {
    return std::system_category().message(error);
}

/// What the sockets need before the first and after the last.
struct Library {
    Library() {
        WSADATA data;
        WSAStartup(MAKEWORD(2, 2), &data);
    }
    ~Library() { WSACleanup(); }
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;
};
#else
using Handle = int;
inline constexpr Handle none = -1;
inline constexpr int sendFlags = MSG_NOSIGNAL;
inline constexpr int wouldBlock = EAGAIN;
inline constexpr int inProgress = EINPROGRESS;

inline int lastError() {
    return errno;
}

inline void closeHandle(Handle socket) {
    close(socket);
}

inline bool makeNonBlocking(Handle socket) {
    return fcntl(socket, F_SETFL, O_NONBLOCK) == 0 && fcntl(socket, F_SETFD, FD_CLOEXEC) == 0;
}

inline int wait(Handle socket, Wanted wanted, int milliseconds) {
    pollfd watched{socket, wanted == Wanted::Reading ? short{POLLIN} : short{POLLOUT}, 0};
    const int ready = poll(&watched, 1, milliseconds);
    return ready < 0 && errno == EINTR ? 0 : ready; // as if nothing had come yet
}

inline std::string lookUpErrorText(int error) {
    return gai_strerror(error);
}

struct Library {};
#endif

} // namespace orvista::systemsocket
