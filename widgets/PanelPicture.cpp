#include "widgets/PanelPicture.h"

#include "display/LedSprites.h"
#include "display/PanelLook.h"

#include <algorithm>

namespace orvista {

namespace {

constexpr QColor colourOf(Pixel pixel) {
    return {pixel.red, pixel.green, pixel.blue};
}

constexpr QColor boardColour = colourOf(panelLook::boardColour);
constexpr QColor rimColour = colourOf(panelLook::rimColour);

/// Two bits for each of nine lights.
constexpr std::uint32_t surroundingCount = 1U << 18;
/// 16 MB; texts need a few hundred squares.
constexpr std::size_t maximumKeptPixels = std::size_t{4} << 20;

QImage imageOf(const Sprite& sprite) {
    QImage image(sprite.side, sprite.side, QImage::Format_ARGB32_Premultiplied);
    auto* pixel = reinterpret_cast<QRgb*>(image.bits());
    for (const Sprite::Dot& dot : sprite.dots)
        *pixel++ = qRgba(qRound(dot.red), qRound(dot.green), qRound(dot.blue), qRound(dot.cover * 255));
    return image;
}

} // namespace

int PanelPicture::cellFor(PanelSize panel, QSize room) {
    const QSize ofCellOne = roomFor(panel, 1);
    return std::max(1, std::min(room.width() / ofCellOne.width(), room.height() / ofCellOne.height()));
}

QSize PanelPicture::roomFor(PanelSize panel, int cell) {
    // The rim is one and a half cells on each side.
    return QSize(panel.columns + 3, panel.rows + 3) * cell;
}

PanelPicture::PanelPicture(PanelSize panel, int cell)
    : panel_(panel),
      cell_(std::max(1, cell)),
      rim_(panelLook::rimOf(cell_)),
      lens_(imageOf(lensSprite(cell_))),
      board_(boardImage(lens_)) {
    for (const Led led : {Led::Red, Led::Green, Led::Orange})
        glows_[static_cast<std::size_t>(led)] = imageOf(lightSprite(cell_, led));
}

QImage PanelPicture::boardImage(const QImage& lens) const {
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
    painter.setBrushOrigin(rim_, rim_);
    painter.fillRect(rim_, rim_, panel_.columns * cell_, panel_.rows * cell_, QBrush(lens));
    return board;
}

void PanelPicture::drawGlow(QPainter& painter, Led led, int x, int y) const {
    if (led == Led::Off)
        return;
    const QImage& glow = glows_[static_cast<std::size_t>(led)];
    const int overhang = (glow.width() - cell_) / 2;
    painter.drawImage(x - overhang, y - overhang, glow);
}

void PanelPicture::drawSquare(QRgb* pixels, Surrounding surrounding) const {
    QImage square(reinterpret_cast<uchar*>(pixels), cell_, cell_, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&square);
    painter.drawImage(0, 0, lens_);
    // Row by row, as the lights of a whole panel would be laid over each other.
    for (int y = -1; y <= 1; ++y) {
        for (int x = -1; x <= 1; ++x) {
            const int shift = 2 * (3 * (1 - x) + (1 - y));
            drawGlow(painter, static_cast<Led>(surrounding >> shift & 3), x * cell_, y * cell_);
        }
    }
}

const QRgb* PanelPicture::square(Surrounding surrounding) const {
    const auto size = static_cast<std::size_t>(cell_) * static_cast<std::size_t>(cell_);
    std::uint32_t& number = squareOf_[surrounding];
    if (number == 0) {
        if (drawnSquares_.size() + size > maximumKeptPixels) {
            drawnSquares_.clear();
            squareOf_.assign(surroundingCount, 0);
        }
        drawnSquares_.resize(drawnSquares_.size() + size);
        number = static_cast<std::uint32_t>(drawnSquares_.size() / size);
        drawSquare(&drawnSquares_[(number - 1) * size], surrounding);
    }
    return &drawnSquares_[(number - 1) * size];
}

void PanelPicture::fillSquares(const LedRaster& raster) const {
    const int columns = std::min(raster.columns(), panel_.columns);
    const int rows = std::min(raster.rows(), panel_.rows);
    if (squares_.isNull()) {
        squares_ = QImage(panel_.columns * cell_, panel_.rows * cell_, QImage::Format_RGB32);
        squareOf_.assign(surroundingCount, 0);
    }
    const auto light = [&](int x, int y) {
        const bool isThere = x < columns && y >= 0 && y < rows;
        return isThere ? static_cast<Surrounding>(raster.at(x, y)) : 0;
    };
    const auto column = [&](int x, int y) {
        return light(x, y - 1) << 4 | light(x, y) << 2 | light(x, y + 1);
    };
    auto* const pixels = reinterpret_cast<QRgb*>(squares_.bits());
    const auto stride = static_cast<std::ptrdiff_t>(squares_.bytesPerLine() / sizeof(QRgb));
    for (int y = 0; y < panel_.rows; ++y) {
        Surrounding surrounding = column(0, y);
        for (int x = 0; x < panel_.columns; ++x) {
            surrounding = (surrounding << 6 | column(x + 1, y)) & (surroundingCount - 1);
            const QRgb* from = square(surrounding);
            QRgb* to = pixels + y * cell_ * stride + x * cell_;
            for (int line = 0; line < cell_; ++line, from += cell_, to += stride)
                std::copy_n(from, cell_, to);
        }
    }
}

void PanelPicture::glowOverRim(QPainter& painter, const LedRaster& raster) const {
    const int columns = std::min(raster.columns(), panel_.columns);
    const int rows = std::min(raster.rows(), panel_.rows);
    const auto glowAt = [&](int x, int y) {
        drawGlow(painter, raster.at(x, y), rim_ + x * cell_, rim_ + y * cell_);
    };
    const auto within = [&](QRect part, auto&& draw) {
        painter.save();
        painter.setClipRect(part, Qt::IntersectClip);
        draw();
        painter.restore();
    };
    const auto row = [&](int y) {
        for (int x = 0; x < columns; ++x)
            glowAt(x, y);
    };
    const auto column = [&](int x) {
        for (int y = 0; y < rows; ++y)
            glowAt(x, y);
    };
    const QRect whole(QPoint(), size());
    const QRect inner = whole.adjusted(rim_, rim_, -rim_, -rim_);
    within({0, 0, whole.width(), rim_}, [&] { row(0); });
    within({0, inner.bottom() + 1, whole.width(), rim_}, [&] {
        if (rows == panel_.rows)
            row(rows - 1);
    });
    within({0, inner.top(), rim_, inner.height()}, [&] { column(0); });
    within({inner.right() + 1, inner.top(), rim_, inner.height()}, [&] {
        if (columns == panel_.columns)
            column(columns - 1);
    });
}

void PanelPicture::paint(QPainter& painter, const LedRaster& raster) const {
    fillSquares(raster);
    painter.drawImage(0, 0, board_);
    painter.drawImage(rim_, rim_, squares_);
    glowOverRim(painter, raster);
}

QImage PanelPicture::image(const LedRaster& raster) const {
    QImage picture(size(), QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    paint(painter, raster);
    return picture;
}

} // namespace orvista
