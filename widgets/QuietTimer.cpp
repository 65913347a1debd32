#include "widgets/QuietTimer.h"

#include "widgets/ModalDialogs.h"

namespace orvista {

QuietTimer::QuietTimer(std::chrono::milliseconds time, std::function<void()> action, QObject* parent)
    : QTimer(parent), action_(std::move(action)) {
    setSingleShot(true);
    setInterval(time);
    connect(this, &QTimer::timeout, this, [this] { isModalDialogOpen() ? start() : action_(); });
}

} // namespace orvista
