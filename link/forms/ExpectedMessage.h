#pragma once

#include "display/MessagePlayer.h"
#include "display/forms/PreviewClock.h"
#include "link/ModbusReader.h"
#include "model/Project.h"

#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>

#include <optional>
#include <vector>

class QLabel;

namespace orvista {

class PanelView;

/// What a display should show: one message, played over and over with what the display holds.
class ExpectedMessage final : public QWidget {
    Q_OBJECT
public:
    ExpectedMessage(const Project& project, int columns, std::function<LocalTime()> localTime,
                    QWidget* parent = nullptr);

    /// Begins with that message; dark without one. \param caption what stands above it
    void show(std::optional<Item> message, const QString& caption);
    /// What the fields show from now on.
    void setHeld(const std::vector<DisplayItem>& items) { items_ = items; }

private:
    void render();

    const Project& project_;
    int columns_;
    std::function<LocalTime()> localTime_;
    std::vector<DisplayItem> items_;
    std::optional<Item> message_;
    MessagePlayer player_;
    QElapsedTimer clock_;
    QTimer frames_{this};
    QLabel* lblAcceptMessage;
    PanelView* acceptPanel;
};

} // namespace orvista
