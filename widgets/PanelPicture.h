#pragma once

#include "display/LedRaster.h"

#include <QImage>
#include <QPainter>
#include <array>

namespace orvista {

/// Draws panels as they look: lenses on a dark board, dull where they are off, with a glow where they are
/// lit. Everything that does not change from picture to picture is drawn once.
class PanelPicture {
public:
    /// \param cell side of one lens' square in device pixels, at least 1
    PanelPicture(PanelSize panel, int cell);

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
    QImage boardImage() const;
    QImage glowImage(Led led) const;

    PanelSize panel_;
    int cell_;
    int rim_;
    QImage board_;
    std::array<QImage, 4> glows_; ///< by Led; nothing for Off
};

} // namespace orvista
