#include "simulator/FtpService.h"

#include "simulator/FtpSession.h"
#include "simulator/Sockets.h"

namespace orvista {

namespace {

constexpr int mostSessions = 8;

} // namespace

FtpService::FtpService(const DeviceFolder& folder, const Faults& faults, QObject* parent)
    : QObject(parent), folder_(folder), faults_(faults) {
    connect(&server_, &QTcpServer::newConnection, this, &FtpService::acceptConnections);
}

bool FtpService::start(const QHostAddress& address, quint16 port) {
    return server_.listen(address, port);
}

QString FtpService::errorText() const {
    return portFault(server_.serverError(), server_.errorString());
}

void FtpService::acceptConnections() {
    while (QTcpSocket* control = server_.nextPendingConnection()) {
        if (sessions_ >= mostSessions) {
            control->write("421 Too many connections\r\n");
            connect(control, &QTcpSocket::disconnected, control, &QObject::deleteLater);
            control->disconnectFromHost();
            continue;
        }
        ++sessions_;
        auto* session = new FtpSession(control, folder_, faults_, this);
        connect(session, &FtpSession::logged, this, &FtpService::logged);
        connect(session, &FtpSession::uploadFinished, this, &FtpService::uploadFinished);
        connect(session, &FtpSession::closed, session, &QObject::deleteLater);
        connect(session, &QObject::destroyed, this, [this] { --sessions_; });
        session->greet();
    }
}

} // namespace orvista
