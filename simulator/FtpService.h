#pragma once

#include "simulator/DeviceFolder.h"
#include "simulator/Faults.h"
#include "simulator/RequestRecord.h"

#include <QHostAddress>
#include <QObject>
#include <QTcpServer>

namespace orvista {

/// The device's file service: plain FTP, passive, one folder.
class FtpService final : public QObject {
    Q_OBJECT

public:
    FtpService(const DeviceFolder& folder, const Faults& faults, QObject* parent = nullptr);

    /// Takes the port, 0 for any free one. False when it cannot be had; errorText() says why.
    bool start(const QHostAddress& address, quint16 port);
    quint16 port() const { return server_.serverPort(); }
    QString errorText() const;

signals:
    void logged(const orvista::RequestRecord& record);
    /// A client said that its upload is complete.
    void uploadFinished();

private:
    void acceptConnections();

    const DeviceFolder& folder_;
    const Faults& faults_;
    QTcpServer server_;
    int sessions_ = 0;
};

} // namespace orvista
