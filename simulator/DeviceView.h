#pragma once

#include "simulator/SimulatedDevice.h"
#include "widgets/PanelView.h"

#include <QTimer>

namespace orvista {

/// The device's panel, moving.
class DeviceView final : public PanelView {
    Q_OBJECT

public:
    explicit DeviceView(const SimulatedDevice& device, QWidget* parent = nullptr);

private:
    void refresh();
    void describe();

    const SimulatedDevice& device_;
    QTimer frames_;
};

} // namespace orvista
