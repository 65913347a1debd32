#pragma once

#include <QTimer>

#include <chrono>
#include <functional>

namespace orvista {

/// Does something once, a while after it was started last. Under a modal dialog it waits on, and looks again
/// after the same time.
class QuietTimer final : public QTimer {
    Q_OBJECT
public:
    /// Long enough for a pause between two keys.
    static constexpr std::chrono::milliseconds usual{300};

    QuietTimer(std::chrono::milliseconds time, std::function<void()> action, QObject* parent = nullptr);

private:
    std::function<void()> action_;
};

} // namespace orvista
