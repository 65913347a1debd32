#include "simulator/DeviceView.h"

namespace orvista {

namespace {

constexpr int panelFrameMilliseconds = 20;

QString numbersOn(const auto& bits) {
    QStringList numbers;
    for (std::size_t index = 0; index < bits.size(); ++index) {
        if (bits[index])
            numbers << QString::number(index + 1);
    }
    return numbers.join(QStringLiteral(", "));
}

} // namespace

DeviceView::DeviceView(const SimulatedDevice& device, QWidget* parent)
    : PanelView(device.raster(), parent), device_(device) {
    setObjectName("panel");
    setAccessibleName(tr("LED panel"));
    connect(&frames_, &QTimer::timeout, this, &DeviceView::refresh);
    connect(&device, &SimulatedDevice::changed, this, [this] {
        describe();
        refresh();
    });
    frames_.start(panelFrameMilliseconds);
    describe();
}

void DeviceView::refresh() {
    if (isVisible())
        showRaster(device_.raster());
}

void DeviceView::describe() {
    const MessageCoils coils = device_.messageCoils();
    if (coils.emergency.any())
        setAccessibleDescription(tr("Shows emergency messages %1").arg(numbersOn(coils.emergency)));
    else if (coils.regular.any())
        setAccessibleDescription(tr("Shows regular messages %1").arg(numbersOn(coils.regular)));
    else
        setAccessibleDescription(tr("Dark: no message is on"));
}

} // namespace orvista
