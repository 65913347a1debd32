#pragma once

#include "link/ModbusClient.h"
#include "link/ModbusReader.h"

#include <QObject>
#include <QTimer>

#include <chrono>
#include <optional>
#include <vector>

namespace orvista {

class DisplayReading;

/// Reads the project's display again and again. It never opens a box: what goes wrong is a text, and it tries
/// again, after longer and longer pauses. While a modal dialog is open it reads nothing.
class DisplayMonitor final : public QObject {
    Q_OBJECT
public:
    using Milliseconds = std::chrono::milliseconds;

    /// \param project whose address and address map count at each reading
    explicit DisplayMonitor(const Project& project, std::uint16_t port = ModbusClient::modbusPort,
                            QObject* parent = nullptr);

    /// From beginning to beginning of two readings.
    void setInterval(Milliseconds interval);
    Milliseconds interval() const { return interval_; }
    void start();
    void stop();
    bool isRunning() const { return isRunning_; }

    /// What was read no longer counts, nor does a reading that is under way: the display is another one.
    /// While it runs, it goes on after one interval, so that an address is not tried at each letter that is
    /// typed.
    void clear();

    /// Closes the connection, and reads nothing until release(): somebody else is about to talk to the
    /// display.
    void hold();
    void release();

    /// What was read last since start() or clear(); none before the first reading.
    const std::optional<std::vector<DisplayItem>>& items() const { return items_; }
    /// Why the last reading failed; empty when it did not.
    const QString& failure() const { return failure_; }
    /// The display holds items(), as far as is known: it runs, and its last reading went well.
    bool isCurrent() const { return isRunning_ && items_ && failure_.isEmpty(); }
    /// Until it tries again after a failure.
    Milliseconds pause() const;

signals:
    /// A reading went well; changed() follows, unless a modal dialog is open.
    void wasRead();
    /// A reading is over, what was read is cleared, or isRunning() has changed.
    void changed();

private:
    void read();
    void take(const std::vector<DisplayItem>& items);
    void fail(const QString& reason);
    void readAfter(Milliseconds pause);

    const Project& project_;
    std::uint16_t port_;
    DisplayReading* reading_;
    QTimer next_{this};
    Milliseconds interval_{1'000};
    bool isRunning_ = false;
    bool isHeld_ = false;
    std::optional<std::vector<DisplayItem>> items_;
    QString failure_;
    std::size_t failures_ = 0; ///< one after the other
};

} // namespace orvista
