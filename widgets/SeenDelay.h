#pragma once

#include "widgets/QuietTimer.h"

class QWidget;

namespace orvista {

/// Does something a moment after it was last asked to, and after a widget has come to the screen; only while
/// the widget is there and no modal dialog is open.
class SeenDelay final : public QObject {
    Q_OBJECT
public:
    /// Belongs to the widget.
    SeenDelay(QWidget& widget, std::function<void()> action);

    void start() { timer_.start(); }
    void stop() { timer_.stop(); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget& widget_;
    QuietTimer timer_;
};

} // namespace orvista
