#pragma once

#include "link/ModbusReader.h"

#include <QAbstractSocket>
#include <QObject>
#include <QTimer>

#include <cstdint>
#include <string>
#include <vector>

class QTcpSocket;

namespace orvista {

/// Reads all items of a display once, over a connection of its own, in the event loop.
class DisplayReading final : public QObject {
    Q_OBJECT
public:
    explicit DisplayReading(QObject* parent = nullptr);
    ~DisplayReading() override;

    /// Connects and asks; ends in one of the signals, unless abort() or another begin() comes first.
    /// \param host as typed, UTF-8
    void begin(const std::string& host, std::uint16_t port, std::vector<DisplayItem> items);
    /// Closes the connection at once; nothing is told any more.
    void abort();
    bool isUnderWay() const { return socket_ != nullptr; }

signals:
    void done(const std::vector<orvista::DisplayItem>& items);
    /// \param reason in words
    void failed(const QString& reason);

private:
    void ask();
    void receive();
    void errorOccurred(QAbstractSocket::SocketError error);
    void timedOut();
    void fail(const QString& reason);

    QTcpSocket* socket_ = nullptr;
    QTimer timeout_{this};
    std::vector<DisplayItem> items_;
    std::vector<ReadStep> steps_;
    std::size_t step_ = 0; ///< under way
    bool isConnected_ = false;
    std::vector<std::uint8_t> received_;
};

} // namespace orvista
