#pragma once

#include <QString>
#include <QTcpSocket>

namespace orvista {

/// "127.0.0.1:40312"
QString peerText(const QTcpSocket& socket);

/// Why a port cannot be had, in our words where another program has it, else in the system's.
QString portFault(QAbstractSocket::SocketError error, const QString& systemText);

/// True when a client asks on and on without taking its answers, which would pile up in memory.
bool clientIgnoresReplies(QTcpSocket& socket);

/// True when the other side has reset the connection and what came before is read. Asked before the socket is
/// read, which cannot tell a reset from an orderly end.
bool wasReset(const QTcpSocket& socket);

/// Ends a connection so that the other side sees a reset instead of an orderly end.
void resetConnection(QTcpSocket& socket);

} // namespace orvista
