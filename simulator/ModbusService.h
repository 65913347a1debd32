#pragma once

#include "simulator/DeviceMemory.h"
#include "simulator/Faults.h"
#include "simulator/RequestRecord.h"

#include <QHash>
#include <QHostAddress>
#include <QObject>
#include <QPointer>
#include <QTcpServer>
#include <QTcpSocket>
#include <memory>

namespace orvista {

/// The Modbus/TCP server: cuts what its clients send into requests and has them performed.
class ModbusService final : public QObject {
    Q_OBJECT

public:
    ModbusService(DeviceMemory& memory, const Faults& faults, QObject* parent = nullptr);

    /// Takes the port, 0 for any free one. False when it cannot be had; errorText() and mayNotBind() say why.
    bool start(const QHostAddress& address, quint16 port);
    /// The faults changed: connections are refused from now on, or accepted again.
    void applyFaults();

    quint16 port() const { return port_; }
    QString errorText() const { return errorText_; }
    /// True when the port was denied to this user, not taken by another program.
    bool mayNotBind() const { return mayNotBind_; }

signals:
    void logged(const orvista::RequestRecord& record);
    /// A request was performed that may have changed coils or registers.
    void memoryWritten();

private:
    bool listen();
    bool holdWithoutListening();
    void acceptConnections();
    void receive(QTcpSocket* client);
    void handle(QTcpSocket* client, const QByteArray& frame);
    void answer(const QPointer<QTcpSocket>& client, const QString& peer, const QByteArray& frame);
    void log(const QString& peer, const QByteArray& bytes, const QString& words);

    DeviceMemory& memory_;
    const Faults& faults_;
    QHash<QTcpSocket*, QByteArray> received_; ///< outlives the server, whose clients take themselves out
    QTcpServer server_;
    std::unique_ptr<QTcpSocket> holder_; ///< keeps the port while connections are refused
    QHostAddress address_;
    quint16 port_ = 0;
    QString errorText_;
    bool mayNotBind_ = false;
};

} // namespace orvista
