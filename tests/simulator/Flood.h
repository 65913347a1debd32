#pragma once

#include <QTcpSocket>
#include <QTest>

namespace orvista::testing {

/// Sends the bytes over and over, far more than the system keeps by itself between two sockets. True when the
/// other side ends the connection.
inline bool floods(QTcpSocket& client, const QByteArray& bytes) {
    constexpr qint64 farTooMuch = 64 * 1024 * 1024;
    const auto isOver = [&] { return client.state() == QAbstractSocket::UnconnectedState; };
    for (qint64 sent = 0; sent < farTooMuch && !isOver(); sent += bytes.size()) {
        client.write(bytes);
        if (!QTest::qWaitFor([&] { return client.bytesToWrite() == 0 || isOver(); }))
            return false;
    }
    return isOver();
}

} // namespace orvista::testing
