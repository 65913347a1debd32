#pragma once

#include <QObject>

class QTcpSocket;

namespace orvista {

/// Notices a device that resets a connection in the moment it accepts it. The socket does not: it takes the
/// reset for an attempt that is still under way and connects again, tens of thousands of times a second. What
/// gives it away is that its notifier reports the end of the attempt a second time.
class ResetWatch final : public QObject {
    Q_OBJECT
public:
    /// Watches from now on; lives with the socket.
    explicit ResetWatch(QTcpSocket& socket);

signals:
    /// Emitted from the event loop, once for each connection.
    void wasReset();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QTcpSocket& socket_;
};

} // namespace orvista
