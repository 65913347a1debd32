#include "widgets/LedView.h"

#include "display/LedFont.h"

#include <algorithm>
#include <utility>

namespace orvista {

namespace {

constexpr LedFont textFont = LedFont::Small5x7;
constexpr int margin = 2; ///< dark dots around a text

void drawGlyph(LedRaster& raster, int left, const Glyph& picture, Led led) {
    for (int y = 0; y < cellHeight(textFont); ++y) {
        const unsigned row = picture.rows[static_cast<std::size_t>(y)];
        for (int x = 0; x < cellWidth(textFont); ++x) {
            if (row & (0x80U >> x))
                raster.set(left + x, margin + y, led);
        }
    }
}

} // namespace

LedRaster panelOfText(std::string_view text, Led led) {
    // The last cell's gap belongs to the margin.
    const int columns = static_cast<int>(text.size()) * cellWidth(textFont) - 1 + 2 * margin;
    LedRaster raster({columns, cellHeight(textFont) + 2 * margin});
    int left = margin;
    for (const char character : text) {
        drawGlyph(raster, left, glyph(textFont, static_cast<unsigned char>(character)), led);
        left += cellWidth(textFont);
    }
    return raster;
}

LedView::LedView(LedRaster shown, QWidget* parent) : PanelView(std::move(shown), parent) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
}

QSize LedView::sizeHint() const {
    return minimumSizeHint() * 1.5;
}

QSize LedView::minimumSizeHint() const {
    return PanelPicture::roomFor(shown().size(), std::max(3, fontMetrics().height() / 3));
}

} // namespace orvista
