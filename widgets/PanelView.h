#pragma once

#include "display/LedRaster.h"
#include "widgets/PanelPicture.h"

#include <QPixmap>
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
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    /// What lies behind the panel, which is seen beside the board and at its corners.
    const QPixmap& background();

    LedRaster shown_;
    std::optional<PanelPicture> picture_;
    QPixmap behind_; ///< none where it may have changed
};

} // namespace orvista
