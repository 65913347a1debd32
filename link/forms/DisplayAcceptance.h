#pragma once

#include "link/AcceptanceRun.h"
#include "link/forms/ModbusExchange.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <cstdint>
#include <map>
#include <string>

namespace orvista {

/// Carries a run out on a display, in the event loop. While nothing is asked no connection stands: the
/// display serves others then.
class DisplayAcceptance final : public QObject {
    Q_OBJECT
public:
    /// \param host as typed, UTF-8
    DisplayAcceptance(const std::string& host, std::uint16_t port, AcceptanceRun run,
                      QObject* parent = nullptr);

    const AcceptanceRun& run() const { return run_; }
    /// Begins to read.
    void start();
    void show(Item message);
    void write(std::map<Item, HeldWords> values);
    void end();

signals:
    /// The run's state, or what it knows, may be another.
    void changed();
    /// Once.
    void over();

private:
    AcceptanceRun::Time now() const { return AcceptanceRun::Time(clock_.elapsed()); }
    void goOn();
    void take(const std::vector<std::uint8_t>& data);
    void noteFailure(ModbusExchange::Failure failure, const QString& reason);

    AcceptanceRun run_;
    ModbusExchange* exchange_;
    QElapsedTimer clock_;
    QTimer wake_{this};
    bool hasToldEnd_ = false;
};

} // namespace orvista
