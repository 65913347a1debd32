#include "simulator/FtpDataChannel.h"

#include "simulator/Sockets.h"

#include <QEvent>
#include <QSocketNotifier>

namespace orvista {

namespace {

// How long a client may take to connect, or to send or take anything.
constexpr int timeoutMilliseconds = 30'000;

// Bytes may come before it is known what is to be done with them. The rest waits at the client.
constexpr qint64 mostUnreadBytes = qint64{1024} * 1024;

} // namespace

FtpDataChannel::FtpDataChannel(const QHostAddress& local, const QHostAddress& peer, QObject* parent)
    : QObject(parent), peer_(peer) {
    timeout_.setSingleShot(true);
    timeout_.setInterval(timeoutMilliseconds);
    connect(&timeout_, &QTimer::timeout, this, &FtpDataChannel::fail);
    connect(&server_, &QTcpServer::newConnection, this, &FtpDataChannel::accept);
    server_.listen(local, 0);
}

void FtpDataChannel::send(const QByteArray& bytes, Course course) {
    direction_ = Direction::Sending;
    bytes_ = bytes;
    course_ = course;
    begin();
}

void FtpDataChannel::collect(qsizetype limit, Course course) {
    direction_ = Direction::Collecting;
    limit_ = limit;
    course_ = course;
    begin();
}

void FtpDataChannel::accept() {
    while (QTcpSocket* candidate = server_.nextPendingConnection()) {
        if (socket_ || candidate->peerAddress() != peer_) {
            candidate->abort();
            candidate->deleteLater();
            continue;
        }
        socket_ = candidate;
        socket_->setParent(this);
        socket_->setReadBufferSize(mostUnreadBytes);
        server_.close();
        for (QSocketNotifier* const notifier : socket_->findChildren<QSocketNotifier*>())
            notifier->installEventFilter(this);
        connect(socket_, &QTcpSocket::readyRead, this, &FtpDataChannel::takeBytes);
        connect(socket_, &QTcpSocket::bytesWritten, this, &FtpDataChannel::handOver);
        connect(socket_, &QTcpSocket::disconnected, this, &FtpDataChannel::end);
        begin();
    }
}

/// Sees each event of the socket before the socket does.
bool FtpDataChannel::eventFilter(QObject*, QEvent* event) {
    if (event->type() == QEvent::SockAct && socket_ && wasReset(*socket_))
        reset_ = true;
    return false;
}

void FtpDataChannel::begin() {
    if (direction_ == Direction::None || over_)
        return;
    timeout_.start();
    if (!socket_)
        return;
    const bool gone = socket_->state() == QAbstractSocket::UnconnectedState;
    if (direction_ == Direction::Collecting) {
        takeBytes();
        if (gone)
            end();
    } else if (gone) {
        fail();
    } else if (course_ == Course::Whole) {
        socket_->write(bytes_);
        // Closes once everything is written.
        socket_->disconnectFromHost();
    } else {
        socket_->write(bytes_.first(bytes_.size() / 2));
        handOver(0);
    }
}

void FtpDataChannel::takeBytes() {
    if (direction_ != Direction::Collecting || over_)
        return;
    timeout_.start();
    bytes_ += socket_->readAll();
    if (bytes_.size() > limit_) {
        fail();
    } else if (course_ != Course::Whole && !bytes_.isEmpty()) {
        over_ = true;
        timeout_.stop();
        emit dropped();
    }
}

void FtpDataChannel::handOver(qint64 written) {
    if (direction_ != Direction::Sending || over_)
        return;
    timeout_.start();
    handedOver_ += written;
    if (course_ != Course::Whole && handedOver_ >= bytes_.size() / 2) {
        over_ = true;
        timeout_.stop();
        emit dropped();
    }
}

void FtpDataChannel::end() {
    if (direction_ == Direction::None || over_)
        return;
    takeBytes();
    if (over_)
        return;
    if (reset_ || (direction_ == Direction::Sending && handedOver_ < bytes_.size())) {
        fail();
        return;
    }
    over_ = true;
    timeout_.stop();
    emit finished();
}

void FtpDataChannel::fail() {
    if (over_)
        return;
    over_ = true;
    timeout_.stop();
    if (socket_)
        socket_->abort();
    emit failed();
}

} // namespace orvista
