#include "widgets/PanelView.h"

#include <QPaintEvent>
#include <algorithm>

namespace orvista {

PanelView::PanelView(LedRaster raster, QWidget* parent) : QWidget(parent), shown_(std::move(raster)) {
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void PanelView::showRaster(LedRaster raster) {
    if (raster == shown_)
        return;
    const bool isResized = raster.size() != shown_.size();
    shown_ = std::move(raster);
    if (isResized)
        updateGeometry();
    update();
}

QSize PanelView::sizeHint() const {
    // Lenses grow with the user's text; very wide panels get smaller ones.
    const int comfortable = std::max(4, fontMetrics().height() / 2);
    return PanelPicture::roomFor(shown_.size(), std::clamp(1024 / shown_.columns(), 2, comfortable));
}

QSize PanelView::minimumSizeHint() const {
    return PanelPicture::roomFor(shown_.size(), std::clamp(512 / shown_.columns(), 1, 4));
}

int PanelView::heightForWidth(int width) const {
    const PanelSize panel = shown_.size();
    return PanelPicture::roomFor(panel, PanelPicture::cellFor(panel, {width, QWIDGETSIZE_MAX})).height();
}

void PanelView::paintEvent(QPaintEvent*) {
    const QSize pixels = size() * devicePixelRatio();
    const int cell = PanelPicture::cellFor(shown_.size(), pixels);
    if (!picture_ || picture_->cell() != cell || picture_->panel() != shown_.size())
        picture_.emplace(shown_.size(), cell);
    QPainter painter(this);
    // From here on device pixels count, so that every lens is as round as the next.
    painter.scale(1 / devicePixelRatio(), 1 / devicePixelRatio());
    const QSize board = picture_->size();
    if (board.width() > pixels.width()) {
        // A panel of more lenses than there are pixels is shown smaller, but whole.
        const double scale = static_cast<double>(pixels.width()) / board.width();
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.translate(0, (pixels.height() - board.height() * scale) / 2);
        painter.scale(scale, scale);
    } else {
        painter.translate((pixels.width() - board.width()) / 2, (pixels.height() - board.height()) / 2);
    }
    picture_->paint(painter, shown_);
}

} // namespace orvista
