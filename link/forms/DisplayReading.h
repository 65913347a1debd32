#pragma once

#include "link/ModbusReader.h"

#include <QObject>

#include <cstdint>
#include <string>
#include <vector>

namespace orvista {

class ModbusExchange;

/// Reads all items of a display once, over a connection of its own, in the event loop.
class DisplayReading final : public QObject {
    Q_OBJECT
public:
    explicit DisplayReading(QObject* parent = nullptr);

    /// Connects and asks; ends in one of the signals, unless abort() or another begin() comes first.
    /// \param host as typed, UTF-8
    void begin(const std::string& host, std::uint16_t port, std::vector<DisplayItem> items);
    /// Closes the connection at once; nothing is told any more.
    void abort();
    bool isUnderWay() const { return isUnderWay_; }

signals:
    void done(const std::vector<orvista::DisplayItem>& items);
    /// \param reason in words
    void failed(const QString& reason);

private:
    void ask();
    void take(const std::vector<std::uint8_t>& data);

    ModbusExchange* exchange_;
    std::vector<DisplayItem> items_;
    std::vector<ReadStep> steps_;
    std::size_t step_ = 0; ///< under way
    bool isUnderWay_ = false;
};

} // namespace orvista
