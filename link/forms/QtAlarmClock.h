#pragma once

#include "link/ModbusClient.h"

#include <QTimer>

namespace orvista {

class QtAlarmClock final : public AlarmClock {
public:
    QtAlarmClock();

    void set(std::chrono::milliseconds after, std::function<void()> ring) override;
    void cancel() override;

private:
    QTimer timer_;
    std::function<void()> ring_;
};

} // namespace orvista
