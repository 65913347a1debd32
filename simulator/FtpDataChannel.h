#pragma once

#include <QByteArray>
#include <QHostAddress>
#include <QObject>
#include <QPointer>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>

namespace orvista {

/// The second connection of one transfer: the client connects to it, then one side sends and closes. It
/// reports exactly one end, finished() or failed().
class FtpDataChannel final : public QObject {
    Q_OBJECT

public:
    /// Where a transfer that is to go wrong stops.
    enum class Course { Whole, DropHalfWay, StallHalfWay };

    /// Only `peer` may connect.
    FtpDataChannel(const QHostAddress& local, const QHostAddress& peer, QObject* parent = nullptr);

    /// 0 when no port could be had.
    quint16 port() const { return server_.serverPort(); }

    /// Sends the bytes and closes.
    void send(const QByteArray& bytes, Course course);
    /// Collects what the client sends until it closes; more than `limit` bytes fail, and so does a reset.
    void collect(qsizetype limit, Course course);
    const QByteArray& collected() const { return bytes_; }

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    /// Everything has been handed over, or everything has come.
    void finished();
    /// The client never connected, sent too much, or left before it had everything.
    void failed();
    /// The transfer got as far as it was to get.
    void dropped();

private:
    enum class Direction { None, Sending, Collecting };

    void accept();
    void begin();
    void takeBytes();
    void handOver(qint64 written);
    void end();
    void fail();

    QTcpServer server_;
    QHostAddress peer_;
    QPointer<QTcpSocket> socket_;
    QTimer timeout_;
    QByteArray bytes_;
    Direction direction_ = Direction::None;
    Course course_ = Course::Whole;
    qsizetype limit_ = 0;
    qint64 handedOver_ = 0;
    bool reset_ = false;
    bool over_ = false;
};

} // namespace orvista
