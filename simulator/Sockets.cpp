#include "simulator/Sockets.h"

#include <QHostAddress>
#include <sys/socket.h>

namespace orvista {

QString peerText(const QTcpSocket& socket) {
    return QStringLiteral("%1:%2").arg(socket.peerAddress().toString()).arg(socket.peerPort());
}

void resetConnection(QTcpSocket& socket) {
    const linger atOnce{1, 0};
    ::setsockopt(static_cast<int>(socket.socketDescriptor()), SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
    socket.abort();
}

} // namespace orvista
