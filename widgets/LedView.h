#pragma once

#include "display/LedRaster.h"
#include "widgets/PanelView.h"

#include <string_view>

namespace orvista {

/// A panel just large enough for a text in the device's small font, with a margin of dark dots around it.
/// \param text in Windows-1252
LedRaster panelOfText(std::string_view text, Led led);

/// A panel that shows one picture for ever, large beside the text around it.
class LedView : public PanelView {
    Q_OBJECT
public:
    explicit LedView(LedRaster shown, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool hasHeightForWidth() const override { return false; }
};

} // namespace orvista
