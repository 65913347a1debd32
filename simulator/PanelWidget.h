#pragma once

#include "simulator/SimulatedDevice.h"
#include "widgets/PanelPicture.h"

#include <QTimer>
#include <QWidget>
#include <optional>

namespace orvista {

/// The device's panel, moving, as large as its place allows.
class PanelWidget final : public QWidget {
    Q_OBJECT

public:
    explicit PanelWidget(const SimulatedDevice& device, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    /// What is on the widget now.
    const LedRaster& shown() const { return shown_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void refresh();
    void describe();
    int cellFor(QSize devicePixels) const;
    QSize sizeForCell(int cell) const;

    const SimulatedDevice& device_;
    LedRaster shown_;
    std::optional<PanelPicture> picture_;
    QTimer frames_;
};

} // namespace orvista
