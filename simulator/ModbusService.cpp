#include "simulator/ModbusService.h"

#include "simulator/ModbusRequests.h"
#include "simulator/ModbusResponder.h"
#include "simulator/Sockets.h"

#include <QTimer>

namespace orvista {

namespace {

// One device has few masters.
constexpr int mostClients = 32;

std::string_view view(const QByteArray& bytes) {
    return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

QByteArray garbageAnswer() {
    return QByteArrayLiteral("\xDE\xAD\xBE\xEFgarbage\x00\xFF\x00");
}

} // namespace

ModbusService::ModbusService(DeviceMemory& memory, const Faults& faults, QObject* parent)
    : QObject(parent), memory_(memory), faults_(faults) {
    connect(&server_, &QTcpServer::newConnection, this, &ModbusService::acceptConnections);
}

bool ModbusService::start(const QHostAddress& address, quint16 port) {
    address_ = address;
    port_ = port;
    return faults_.modbus == ModbusFault::Refuse ? holdWithoutListening() : listen();
}

void ModbusService::applyFaults() {
    if (port_ == 0)
        return;
    const bool refuse = faults_.modbus == ModbusFault::Refuse;
    if (refuse && server_.isListening()) {
        server_.close();
        holdWithoutListening();
    } else if (!refuse && holder_) {
        listen();
    }
}

bool ModbusService::listen() {
    holder_.reset();
    if (server_.listen(address_, port_)) {
        port_ = server_.serverPort();
        return true;
    }
    errorText_ = portFault(server_.serverError(), server_.errorString());
    mayNotBind_ = server_.serverError() == QAbstractSocket::SocketAccessError;
    return false;
}

bool ModbusService::holdWithoutListening() {
    holder_ = std::make_unique<QTcpSocket>();
    if (holder_->bind(address_, port_, QAbstractSocket::ReuseAddressHint)) {
        port_ = holder_->localPort();
        return true;
    }
    errorText_ = portFault(holder_->error(), holder_->errorString());
    mayNotBind_ = holder_->error() == QAbstractSocket::SocketAccessError;
    holder_.reset();
    return false;
}

void ModbusService::acceptConnections() {
    while (QTcpSocket* client = server_.nextPendingConnection()) {
        const QString peer = peerText(*client);
        client->setSocketOption(QAbstractSocket::LowDelayOption, 1);
        connect(client, &QTcpSocket::disconnected, client, &QObject::deleteLater);
        if (faults_.modbus == ModbusFault::Reset) {
            log(peer, {}, tr("Connected; reset at once"));
            resetConnection(*client);
            client->deleteLater();
        } else if (faults_.modbus == ModbusFault::CloseAtOnce || received_.size() >= mostClients) {
            log(peer, {}, tr("Connected; closed at once"));
            client->disconnectFromHost();
        } else {
            received_.insert(client, {});
            connect(client, &QTcpSocket::readyRead, this, [this, client] { receive(client); });
            connect(client, &QObject::destroyed, this, [this, client] { received_.remove(client); });
            receive(client);
        }
    }
}

void ModbusService::receive(QTcpSocket* client) {
    QByteArray& pending = received_[client];
    pending += client->readAll();
    for (;;) {
        const FrameStart first = firstModbusFrame(view(pending));
        if (first.state == FrameState::Incomplete)
            return;
        if (first.state == FrameState::Garbage) {
            log(peerText(*client), pending.left(longestModbusFrame), tr("Not Modbus; connection closed"));
            pending.clear();
            client->abort();
            return;
        }
        const QByteArray frame = pending.left(static_cast<qsizetype>(first.size));
        pending.remove(0, frame.size());
        handle(client, frame);
        if (clientIgnoresReplies(*client)) {
            log(peerText(*client), {}, tr("Leaves its answers unread; connection closed"));
            pending.clear();
            client->abort();
            return;
        }
    }
}

void ModbusService::handle(QTcpSocket* client, const QByteArray& frame) {
    const QString peer = peerText(*client);
    if (faults_.answerDelay <= 0) {
        answer(client, peer, frame);
        return;
    }
    // The client may be gone by then; its request counts all the same.
    QTimer::singleShot(faults_.answerDelay, this, [this, client = QPointer<QTcpSocket>(client), peer, frame] {
        answer(client, peer, frame);
    });
}

void ModbusService::answer(const QPointer<QTcpSocket>& client, const QString& peer, const QByteArray& frame) {
    QString words = QString::fromStdString(describeModbusRequest(view(frame)));
    std::string reply;
    bool performed = false;
    switch (faults_.modbus) {
    case ModbusFault::NoAnswer:
        words += tr(" (not answered)");
        break;
    case ModbusFault::Garbage:
        words += tr(" (answered with garbage)");
        reply = garbageAnswer().toStdString();
        break;
    case ModbusFault::Exception:
        reply = refuseModbusRequest(view(frame), faults_.exceptionCode);
        break;
    default:
        reply = performModbusRequest(view(frame), memory_);
        performed = true;
    }
    if (const std::optional<unsigned> code = modbusException(reply))
        words += tr(" (answered with exception %1)").arg(*code);
    log(peer, frame, words);
    if (client && !reply.empty())
        client->write(reply.data(), static_cast<qint64>(reply.size()));
    if (performed && writesModbusMemory(view(frame)))
        emit memoryWritten();
}

void ModbusService::log(const QString& peer, const QByteArray& bytes, const QString& words) {
    emit logged({QDateTime::currentDateTime(), peer, bytes, words});
}

} // namespace orvista
