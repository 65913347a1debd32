#include "widgets/SeenDelay.h"

#include <QEvent>
#include <QWidget>

namespace orvista {

SeenDelay::SeenDelay(QWidget& widget, std::function<void()> action)
    : QObject(&widget),
      widget_(widget),
      timer_(
          QuietTimer::usual,
          [this, action = std::move(action)] {
              if (widget_.isVisible())
                  action();
          },
          this) {
    widget.installEventFilter(this);
}

bool SeenDelay::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Show)
        start();
    return QObject::eventFilter(watched, event);
}

} // namespace orvista
