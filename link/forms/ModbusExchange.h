#pragma once

#include "link/ModbusFrames.h"

#include <QAbstractSocket>
#include <QObject>
#include <QTimer>

#include <cstdint>
#include <string>
#include <vector>

class QTcpSocket;

namespace orvista {

/// Asks a display one thing after the other in the event loop. The connection is made with the first request
/// and stays until close().
class ModbusExchange final : public QObject {
    Q_OBJECT
public:
    explicit ModbusExchange(QObject* parent = nullptr);
    ~ModbusExchange() override;

    /// Which display is asked from now on. \param host as typed, UTF-8
    void setDisplay(const std::string& host, std::uint16_t port);
    /// Ends in one of the signals, unless close() comes first. One request at a time.
    void ask(const Frame& request);
    /// Closes the connection at once; nothing is told any more.
    void close();
    bool isAsking() const { return isAsking_; }

    /// What became of a request without the answer that it should have.
    enum class Failure {
        Refused, ///< by an exception: it was not carried out, and the connection stands
        Unclear, ///< by an exception, and it may be carried out; the connection stands
        Lost     ///< it may be carried out, and the connection is closed
    };

signals:
    /// \param data as answerData() gives it
    void answered(const std::vector<std::uint8_t>& data);
    /// \param reason in words
    void failed(orvista::ModbusExchange::Failure failure, const QString& reason);

private:
    void connectToDisplay();
    void send();
    void receive();
    void errorOccurred(QAbstractSocket::SocketError error);
    void timedOut();
    void fail(Failure failure, const QString& reason);

    std::string host_;
    std::uint16_t port_ = 0;
    QTcpSocket* socket_ = nullptr;
    QTimer timeout_{this};
    bool isConnected_ = false;
    bool isAsking_ = false;
    Frame request_;
    std::vector<std::uint8_t> received_;
};

} // namespace orvista
