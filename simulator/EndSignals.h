#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <array>
#include <memory>

namespace orvista {

/// Turns SIGTERM and SIGINT into a Qt signal, so that the program ends in order. One object at a time.
class EndSignals final : public QObject {
    Q_OBJECT

public:
    explicit EndSignals(QObject* parent = nullptr);
    ~EndSignals() override;

signals:
    void terminationRequested();

private:
    std::array<int, 2> pipe_{-1, -1};
    std::unique_ptr<QSocketNotifier> notifier_;
};

} // namespace orvista
