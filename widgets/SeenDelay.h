#pragma once

#include <QTimer>

#include <functional>

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
    void act();

    QWidget& widget_;
    std::function<void()> action_;
    QTimer timer_{this};
};

} // namespace orvista
