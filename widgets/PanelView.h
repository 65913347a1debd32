#pragma once

#include "display/LedRaster.h"
#include "widgets/PanelPicture.h"

#include <QWidget>
#include <optional>

namespace orvista {

/// A panel as large as its place allows.
class PanelView : public QWidget {
    Q_OBJECT

public:
    explicit PanelView(LedRaster raster, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool hasHeightForWidth() const override { return sizePolicy().hasHeightForWidth(); }
    int heightForWidth(int width) const override;

    /// What is on the widget now.
    const LedRaster& shown() const { return shown_; }
    void showRaster(LedRaster raster);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    LedRaster shown_;
    std::optional<PanelPicture> picture_;
};

} // namespace orvista
