#pragma once

#include <QStatusBar>

class QLabel;
class QTimer;

namespace orvista {

/// The status bar `StatusBarMain`: the device model, the date and the time. Its own clock is the only thing
/// that ever writes to it.
class StatusBar final : public QStatusBar {
    Q_OBJECT
public:
    explicit StatusBar(QWidget* parent = nullptr);

private:
    QLabel* addPanel(const QString& name);
    void showClock();

    QLabel* date_;
    QLabel* time_;
    QTimer* clock_;
};

} // namespace orvista
