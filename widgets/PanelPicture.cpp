#include "widgets/PanelPicture.h"

#include <QRadialGradient>
#include <algorithm>
#include <cmath>

namespace orvista {

namespace {

// The hardware's own colours: they do not follow the desktop's palette.
constexpr QColor boardColour(16, 17, 19);
constexpr QColor rimColour(44, 46, 50);
constexpr QColor offCentre(50, 46, 43);
constexpr QColor offEdge(30, 28, 27);

/// A light's glow reaches this many cells from its centre.
constexpr double glowReach = 1.25;
/// Radius of a lens in cells.
constexpr double lensRadius = 0.4;

struct Light {
    QColor core;
    QColor lens;
};

Light lightOf(Led led) {
    switch (led) {
    case Led::Red:
        return {QColor(255, 150, 120), QColor(255, 36, 22)};
    case Led::Green:
        return {QColor(210, 255, 170), QColor(70, 235, 50)};
    default:
        return {QColor(255, 226, 150), QColor(255, 150, 12)};
    }
}

QColor withAlpha(QColor colour, int alpha) {
    colour.setAlpha(alpha);
    return colour;
}

} // namespace

PanelPicture::PanelPicture(PanelSize panel, int cell)
    : panel_(panel), cell_(std::max(1, cell)), rim_(cell_ + cell_ / 2), board_(boardImage()) {
    for (const Led led : {Led::Red, Led::Green, Led::Orange})
        glows_[static_cast<std::size_t>(led)] = glowImage(led);
}

QImage PanelPicture::boardImage() const {
    QImage board(panel_.columns * cell_ + 2 * rim_, panel_.rows * cell_ + 2 * rim_,
                 QImage::Format_ARGB32_Premultiplied);
    board.fill(Qt::transparent);
    QPainter painter(&board);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(rimColour);
    painter.drawRoundedRect(board.rect(), rim_ * 0.6, rim_ * 0.6);
    const double edge = std::max(1.0, rim_ * 0.3);
    painter.setBrush(boardColour);
    painter.drawRoundedRect(QRectF(board.rect()).adjusted(edge, edge, -edge, -edge), rim_ * 0.4, rim_ * 0.4);
    for (int y = 0; y < panel_.rows; ++y) {
        for (int x = 0; x < panel_.columns; ++x) {
            const QPointF centre(rim_ + (x + 0.5) * cell_, rim_ + (y + 0.5) * cell_);
            QRadialGradient lens(centre, lensRadius * cell_);
            lens.setColorAt(0, offCentre);
            lens.setColorAt(1, offEdge);
            painter.setBrush(lens);
            painter.drawEllipse(centre, lensRadius * cell_, lensRadius * cell_);
        }
    }
    return board;
}

QImage PanelPicture::glowImage(Led led) const {
    const int side = 2 * static_cast<int>(std::ceil(glowReach * cell_)) + cell_ % 2;
    QImage glow(side, side, QImage::Format_ARGB32_Premultiplied);
    glow.fill(Qt::transparent);
    QPainter painter(&glow);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const QPointF centre(side / 2.0, side / 2.0);
    const auto [core, lens] = lightOf(led);
    QRadialGradient halo(centre, glowReach * cell_);
    halo.setColorAt(0, withAlpha(lens, 120));
    halo.setColorAt(0.4, withAlpha(lens, 48));
    halo.setColorAt(1, withAlpha(lens, 0));
    painter.setBrush(halo);
    painter.drawEllipse(centre, glowReach * cell_, glowReach * cell_);
    QRadialGradient light(centre, (lensRadius + 0.04) * cell_);
    light.setColorAt(0, core);
    light.setColorAt(0.55, lens);
    light.setColorAt(1, lens.darker(115));
    painter.setBrush(light);
    painter.drawEllipse(centre, (lensRadius + 0.04) * cell_, (lensRadius + 0.04) * cell_);
    return glow;
}

void PanelPicture::paint(QPainter& painter, const LedRaster& raster) const {
    painter.drawImage(0, 0, board_);
    for (int y = 0; y < std::min(raster.rows(), panel_.rows); ++y) {
        for (int x = 0; x < std::min(raster.columns(), panel_.columns); ++x) {
            const Led led = raster.at(x, y);
            if (led == Led::Off)
                continue;
            const QImage& glow = glows_[static_cast<std::size_t>(led)];
            const int overhang = (glow.width() - cell_) / 2;
            painter.drawImage(rim_ + x * cell_ - overhang, rim_ + y * cell_ - overhang, glow);
        }
    }
}

QImage PanelPicture::image(const LedRaster& raster) const {
    QImage picture(size(), QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    paint(painter, raster);
    return picture;
}

} // namespace orvista
