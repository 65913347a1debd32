#include "widgets/PanelView.h"

#include <QPaintEvent>
#include <algorithm>
#include <vector>

namespace orvista {

PanelView::PanelView(LedRaster raster, QWidget* parent) : QWidget(parent), shown_(std::move(raster)) {
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    // Else each frame would have the windows behind it paint themselves, which costs more than the panel.
    setAttribute(Qt::WA_OpaquePaintEvent);
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

const QPixmap& PanelView::background() {
    const QSize pixels = size() * devicePixelRatio();
    if (behind_.size() == pixels)
        return behind_;
    behind_ = QPixmap(pixels);
    behind_.setDevicePixelRatio(devicePixelRatio());
    behind_.fill(palette().color(QPalette::Window));
    std::vector<QWidget*> ancestors;
    for (QWidget* widget = parentWidget(); widget != nullptr; widget = widget->parentWidget()) {
        ancestors.insert(ancestors.begin(), widget);
        if (widget->isWindow())
            break;
    }
    for (QWidget* const ancestor : ancestors)
        ancestor->render(&behind_, QPoint(), QRect(mapTo(ancestor, QPoint()), size()), RenderFlags());
    return behind_;
}

bool PanelView::event(QEvent* event) {
    switch (event->type()) {
    case QEvent::Show:
    case QEvent::Move:
    case QEvent::ParentChange:
    case QEvent::PaletteChange:
    case QEvent::StyleChange:
    case QEvent::EnabledChange:
        behind_ = {};
        break;
    default:
        break;
    }
    return QWidget::event(event);
}

void PanelView::paintEvent(QPaintEvent*) {
    const QSize pixels = size() * devicePixelRatio();
    const int cell = PanelPicture::cellFor(shown_.size(), pixels);
    if (!picture_ || picture_->cell() != cell || picture_->panel() != shown_.size())
        picture_.emplace(shown_.size(), cell);
    QPainter painter(this);
    painter.drawPixmap(0, 0, background());
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
