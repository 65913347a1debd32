#include "widgets/LedPanel.h"

#include <QPainter>

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace orvista {

namespace {

constexpr int glyphColumns = 5;
constexpr int glyphRows = 7;
constexpr int cellColumns = glyphColumns + 1;
constexpr int border = 2; ///< dark LEDs around the text

using Glyph = std::array<std::string_view, glyphRows>;

constexpr std::array<std::pair<char, Glyph>, 6> glyphs = {{
    {'L', {"#    ", "#    ", "#    ", "#    ", "#    ", "#    ", "#####"}},
    {'X', {"#   #", "#   #", " # # ", "  #  ", " # # ", "#   #", "#   #"}},
    {'-', {"     ", "     ", "     ", "#####", "     ", "     ", "     "}},
    {'4', {"   # ", "  ## ", " # # ", "#  # ", "#####", "   # ", "   # "}},
    {'0', {" ### ", "#   #", "#  ##", "# # #", "##  #", "#   #", " ### "}},
    {'D', {"#### ", "#   #", "#   #", "#   #", "#   #", "#   #", "#### "}},
}};

/// The panel looks the same whatever the desktop's colours: it is a picture of a device.
const QColor housing(28, 28, 30);
const QColor darkLed(58, 46, 40);
const QColor litLed(255, 122, 40);
const QColor glow(255, 122, 40, 70);

} // namespace

LedPanel::LedPanel(std::string text, QWidget* parent) : QWidget(parent), text_(std::move(text)) {}

QSize LedPanel::sizeHint() const {
    return minimumSizeHint() * 1.5;
}

QSize LedPanel::minimumSizeHint() const {
    const int led = std::max(3, fontMetrics().height() / 3);
    const int columns = static_cast<int>(text_.size()) * cellColumns - 1 + 2 * border;
    return QSize(columns, glyphRows + 2 * border) * led;
}

bool LedPanel::isLit(int column, int row) const {
    const int character = column / cellColumns;
    if (column < 0 || row < 0 || row >= glyphRows || character >= static_cast<int>(text_.size()) ||
        column % cellColumns == glyphColumns)
        return false;
    const auto* const glyph = std::find_if(glyphs.begin(), glyphs.end(), [&](const auto& known) {
        return known.first == text_[static_cast<std::size_t>(character)];
    });
    return glyph != glyphs.end() &&
           glyph->second[static_cast<std::size_t>(row)][static_cast<std::size_t>(column % cellColumns)] ==
               '#';
}

void LedPanel::paintEvent(QPaintEvent* /*event*/) {
    const int columns = static_cast<int>(text_.size()) * cellColumns - 1 + 2 * border;
    const int rows = glyphRows + 2 * border;
    const double pitch =
        std::min(static_cast<double>(width()) / columns, static_cast<double>(height()) / rows);
    const QRectF panel(0, 0, columns * pitch, rows * pitch);

    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(QRectF(rect()).center() - panel.center());
    painter.setPen(Qt::NoPen);
    painter.setBrush(housing);
    painter.drawRoundedRect(panel, pitch, pitch);
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            const bool lit = isLit(column - border, row - border);
            const QPointF centre((column + 0.5) * pitch, (row + 0.5) * pitch);
            if (lit) {
                painter.setBrush(glow);
                painter.drawEllipse(centre, pitch * 0.6, pitch * 0.6);
            }
            painter.setBrush(lit ? litLed : darkLed);
            painter.drawEllipse(centre, pitch * 0.36, pitch * 0.36);
        }
    }
}

} // namespace orvista
