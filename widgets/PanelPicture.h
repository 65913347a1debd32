#pragma once

#include "display/LedRaster.h"

#include <QImage>
#include <QPainter>
#include <array>
#include <cstdint>
#include <vector>

namespace orvista {

/// Draws panels as they look: lenses on a dark board, dull where they are off, with a glow where they are
/// lit. Everything that does not change from picture to picture is drawn once.
///
/// How the square of a lens looks depends on its own light and on those of its eight neighbours, whose glow
/// reaches into it. Each such surrounding is drawn when it first occurs, and copied from then on.
class PanelPicture {
public:
    /// \param cell side of one lens' square in device pixels, at least 1
    PanelPicture(PanelSize panel, int cell);

    /// The largest cell whose board, with its rim, fits into that room; at least 1.
    static int cellFor(PanelSize panel, QSize room);
    /// The smallest room for a board of such cells, in device pixels.
    static QSize roomFor(PanelSize panel, int cell);

    PanelSize panel() const { return panel_; }
    int cell() const { return cell_; }
    /// Width of the board's rim around the lenses, in device pixels.
    int rim() const { return rim_; }
    /// Of the whole board, in device pixels.
    QSize size() const { return board_.size(); }
    /// The board with its top left corner at the origin, on a painter that counts device pixels.
    void paint(QPainter& painter, const LedRaster& raster) const;
    QImage image(const LedRaster& raster) const;

private:
    /// A light and its neighbours, two bits each.
    using Surrounding = std::uint32_t;

    QImage boardImage(const QImage& lens) const;
    const QRgb* square(Surrounding surrounding) const;
    void drawSquare(QRgb* pixels, Surrounding surrounding) const;
    void fillSquares(const LedRaster& raster) const;
    void drawGlow(QPainter& painter, Led led, int x, int y) const;
    void glowOverRim(QPainter& painter, const LedRaster& raster) const;

    PanelSize panel_;
    int cell_;
    int rim_;
    QImage lens_; ///< a lens that is off, on its square of the board
    QImage board_;
    std::array<QImage, 4> glows_; ///< by Led; nothing for Off

    // What was drawn before, kept for the next picture.
    mutable QImage squares_;                      ///< the board within its rim
    mutable std::vector<std::uint32_t> squareOf_; ///< by surrounding: the number of its square, from 1
    mutable std::vector<QRgb> drawnSquares_;
};

} // namespace orvista
