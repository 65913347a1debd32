#include "simulator/Sockets.h"

#include <QHostAddress>
#ifdef _WIN32
#include <winsock2.h>
#else
#include <cerrno>
#include <sys/socket.h>
#endif

namespace orvista {

QString peerText(const QTcpSocket& socket) {
    return QStringLiteral("%1:%2").arg(socket.peerAddress().toString()).arg(socket.peerPort());
}

QString portFault(QAbstractSocket::SocketError error, const QString& systemText) {
    if (error == QAbstractSocket::AddressInUseError)
        return QStringLiteral("another program has this port. Close it, perhaps a simulated display that was "
                              "started before, and start this one again");
    return systemText;
}

bool clientIgnoresReplies(QTcpSocket& socket) {
    constexpr qint64 mostWaitingBytes = qint64{64} * 1024;
    // Many requests that came at once are answered before the system takes the first answer.
    if (socket.bytesToWrite() > mostWaitingBytes)
        socket.flush();
    return socket.bytesToWrite() > mostWaitingBytes;
}

bool wasReset(const QTcpSocket& socket) {
    char byte = 0;
#ifdef _WIN32
    return ::recv(static_cast<SOCKET>(socket.socketDescriptor()), &byte, 1, MSG_PEEK) < 0 &&
           ::WSAGetLastError() == WSAECONNRESET;
#else
    return ::recv(static_cast<int>(socket.socketDescriptor()), &byte, 1, MSG_PEEK | MSG_DONTWAIT) < 0 &&
           errno == ECONNRESET;
#endif
}

void resetConnection(QTcpSocket& socket) {
    const linger atOnce{1, 0};
#ifdef _WIN32
    ::setsockopt(static_cast<SOCKET>(socket.socketDescriptor()), SOL_SOCKET, SO_LINGER,
                 reinterpret_cast<const char*>(&atOnce), sizeof atOnce);
#else
    ::setsockopt(static_cast<int>(socket.socketDescriptor()), SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
#endif
    socket.abort();
}

} // namespace orvista
