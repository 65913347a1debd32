#pragma once

#include "display/LedRaster.h"
#include "widgets/PanelPicture.h"

#include <QWidget>

#include <optional>
#include <string_view>

namespace orvista {

/// A panel just large enough for a text in the device's small font, with a margin of dark dots around it.
/// \param text in Windows-1252
LedRaster panelOfText(std::string_view text, Led led);

/// A panel that shows one picture for ever, as large as its place allows.
class LedPanel : public QWidget {
    Q_OBJECT
public:
    explicit LedPanel(LedRaster shown, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    LedRaster shown_;
    std::optional<PanelPicture> picture_; ///< for the present size
};

} // namespace orvista
