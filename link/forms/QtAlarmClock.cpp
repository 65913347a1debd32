#include "link/forms/QtAlarmClock.h"

#include <utility>

namespace orvista {

QtAlarmClock::QtAlarmClock() {
    timer_.setSingleShot(true);
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] {
        // The alarm may be set again while it rings.
        if (const auto ring = std::exchange(ring_, nullptr))
            ring();
    });
}

void QtAlarmClock::set(std::chrono::milliseconds after, std::function<void()> ring) {
    ring_ = std::move(ring);
    timer_.start(after);
}

void QtAlarmClock::cancel() {
    timer_.stop();
    ring_ = nullptr;
}

} // namespace orvista
