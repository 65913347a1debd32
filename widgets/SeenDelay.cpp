#include "widgets/SeenDelay.h"

#include "widgets/ModalDialogs.h"

#include <QEvent>
#include <QWidget>

namespace orvista {

namespace {

constexpr std::chrono::milliseconds delay{300};

} // namespace

SeenDelay::SeenDelay(QWidget& widget, std::function<void()> action)
    : QObject(&widget), widget_(widget), action_(std::move(action)) {
    timer_.setSingleShot(true);
    timer_.setInterval(delay);
    connect(&timer_, &QTimer::timeout, this, &SeenDelay::act);
    widget.installEventFilter(this);
}

void SeenDelay::act() {
    if (isModalDialogOpen())
        start();
    else if (widget_.isVisible())
        action_();
}

bool SeenDelay::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Show)
        start();
    return QObject::eventFilter(watched, event);
}

} // namespace orvista
