#include "link/forms/QtClientSocket.h"

#include "link/forms/ResetWatch.h"

#include <QNetworkProxy>
#include <QTcpSocket>

namespace orvista {

QtClientSocket::QtClientSocket(QObject* parent) : QObject(parent) {}

QtClientSocket::~QtClientSocket() {
    close();
}

void QtClientSocket::connectTo(const std::string& host, std::uint16_t port) {
    close();
    stood_ = false;
    socket_ = new QTcpSocket(this);
    socket_->setProxy(QNetworkProxy::NoProxy);
    // What a device sends is not wanted: a buffer that is full at once stops the reading.
    socket_->setReadBufferSize(1);
    connect(socket_, &QTcpSocket::connected, this, &QtClientSocket::connected);
    connect(socket_, &QTcpSocket::bytesWritten, this, &QtClientSocket::bytesWritten);
    connect(socket_, &QTcpSocket::errorOccurred, this, &QtClientSocket::errorOccurred);
    const auto* const watch = new ResetWatch(*socket_);
    connect(watch, &ResetWatch::wasReset, this, [this] { events_->onClosedByRemote(); });
    socket_->connectToHost(QString::fromStdString(host), port);
}

void QtClientSocket::send(const Frame& bytes) {
    socket_->write(reinterpret_cast<const char*>(bytes.data()), static_cast<qint64>(bytes.size()));
}

void QtClientSocket::close() {
    if (!socket_)
        return;
    // Called from the socket's own signals, so it may not be deleted here.
    disconnect(socket_, nullptr, this, nullptr);
    socket_->findChild<ResetWatch*>()->disconnect(this);
    socket_->abort();
    socket_->deleteLater();
    socket_ = nullptr;
}

void QtClientSocket::connected() {
    stood_ = true;
    events_->onConnected();
}

void QtClientSocket::bytesWritten() {
    if (socket_->bytesToWrite() == 0)
        events_->onSendCompleted();
}

void QtClientSocket::errorOccurred(QAbstractSocket::SocketError error) {
    // The end of a standing connection is reported as an error too.
    if (stood_ && error == QAbstractSocket::RemoteHostClosedError)
        events_->onClosedByRemote();
    else
        events_->onError(error, socket_->errorString().toStdString());
}

} // namespace orvista
