#include "widgets/LedPanel.h"

#include "display/LedFont.h"

#include <QPainter>

#include <algorithm>
#include <utility>

namespace orvista {

namespace {

constexpr LedFont textFont = LedFont::Small5x7;
constexpr int margin = 2; ///< dark dots around a text
/// The picture's rim is one and a half cells on each side.
constexpr int rimCells = 3;

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

LedPanel::LedPanel(LedRaster shown, QWidget* parent) : QWidget(parent), shown_(std::move(shown)) {}

QSize LedPanel::sizeHint() const {
    return minimumSizeHint() * 1.5;
}

QSize LedPanel::minimumSizeHint() const {
    const int cell = std::max(3, fontMetrics().height() / 3);
    return QSize(shown_.columns() + rimCells, shown_.rows() + rimCells) * cell;
}

void LedPanel::paintEvent(QPaintEvent* /*event*/) {
    const QSize pixels = size() * devicePixelRatio();
    const int cell = std::max(1, std::min(pixels.width() / (shown_.columns() + rimCells),
                                          pixels.height() / (shown_.rows() + rimCells)));
    if (!picture_ || picture_->cell() != cell)
        picture_.emplace(shown_.size(), cell);
    QPainter painter(this);
    // From here on device pixels count, so that every lens is as round as the next.
    painter.scale(1 / devicePixelRatio(), 1 / devicePixelRatio());
    painter.translate((pixels.width() - picture_->size().width()) / 2,
                      (pixels.height() - picture_->size().height()) / 2);
    picture_->paint(painter, shown_);
}

} // namespace orvista
