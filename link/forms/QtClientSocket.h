#pragma once

#include "link/ModbusClient.h"

#include <QAbstractSocket>
#include <QObject>

class QTcpSocket;

namespace orvista {

/// The platform's TCP socket, one for each connection. It connects directly, whatever proxy is set up.
class QtClientSocket final : public QObject, public ClientSocket {
    Q_OBJECT
public:
    explicit QtClientSocket(QObject* parent = nullptr);
    ~QtClientSocket() override;

    /// Is told of the events; must outlive the socket or its last connection.
    void leadEventsTo(SocketEvents& events) { events_ = &events; }

    void connectTo(const std::string& host, std::uint16_t port) override;
    void send(const Frame& bytes) override;
    void close() override;

private:
    void connected();
    void bytesWritten();
    void errorOccurred(QAbstractSocket::SocketError error);

    SocketEvents* events_ = nullptr;
    QTcpSocket* socket_ = nullptr;
    bool stood_ = false;
};

} // namespace orvista
