#include "simulator/PanelWidget.h"

#include <QPaintEvent>
#include <algorithm>

namespace orvista {

namespace {

constexpr int frameMilliseconds = 20;

QString numbersOn(const auto& bits) {
    QStringList numbers;
    for (std::size_t index = 0; index < bits.size(); ++index) {
        if (bits[index])
            numbers << QString::number(index + 1);
    }
    return numbers.join(QStringLiteral(", "));
}

} // namespace

PanelWidget::PanelWidget(const SimulatedDevice& device, QWidget* parent)
    : QWidget(parent), device_(device), shown_(device.raster()) {
    setObjectName("panel");
    setAccessibleName(tr("LED panel"));
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    connect(&frames_, &QTimer::timeout, this, &PanelWidget::refresh);
    connect(&device, &SimulatedDevice::changed, this, [this] {
        describe();
        refresh();
    });
    frames_.start(frameMilliseconds);
    describe();
}

void PanelWidget::refresh() {
    if (!isVisible())
        return;
    LedRaster now = device_.raster();
    if (now == shown_)
        return;
    shown_ = std::move(now);
    update();
}

void PanelWidget::describe() {
    const MessageCoils coils = device_.messageCoils();
    if (coils.emergency.any())
        setAccessibleDescription(tr("Shows emergency messages %1").arg(numbersOn(coils.emergency)));
    else if (coils.regular.any())
        setAccessibleDescription(tr("Shows regular messages %1").arg(numbersOn(coils.regular)));
    else
        setAccessibleDescription(tr("Dark: no message is on"));
}

int PanelWidget::cellFor(QSize devicePixels) const {
    // The rim is one and a half cells on each side.
    const int across = devicePixels.width() / (shown_.columns() + 3);
    const int down = devicePixels.height() / (shown_.rows() + 3);
    return std::max(1, std::min(across, down));
}

QSize PanelWidget::sizeForCell(int cell) const {
    return {(shown_.columns() + 3) * cell, (shown_.rows() + 3) * cell};
}

QSize PanelWidget::sizeHint() const {
    // Lenses grow with the user's text; very wide panels get smaller ones.
    const int comfortable = std::max(4, fontMetrics().height() / 2);
    return sizeForCell(std::clamp(1024 / shown_.columns(), 2, comfortable));
}

QSize PanelWidget::minimumSizeHint() const {
    return sizeForCell(std::clamp(512 / shown_.columns(), 1, 4));
}

int PanelWidget::heightForWidth(int width) const {
    return sizeForCell(std::max(1, width / (shown_.columns() + 3))).height();
}

void PanelWidget::paintEvent(QPaintEvent*) {
    const QSize pixels = size() * devicePixelRatio();
    const int cell = cellFor(pixels);
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
