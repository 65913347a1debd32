#pragma once

#include "simulator/SimulatedDevice.h"

#include <QActionGroup>
#include <QMenu>

namespace orvista {

/// The faults the device can be asked for, the same as on the command line.
class FaultsMenu final : public QMenu {
    Q_OBJECT

public:
    explicit FaultsMenu(SimulatedDevice& device, QWidget* parent = nullptr);

private:
    void addModbusFaults();
    void addTransferFaults();
    /// Opens with the faults the device has now.
    void refresh();
    void askExceptionCode();
    void askDelay();
    void askFile();
    template <typename Change>
    void change(Change change);

    SimulatedDevice& device_;
    QActionGroup* modbusFaults_;
    QActionGroup* transferFaults_;
    QAction* exceptionCode_ = nullptr;
    QAction* delay_ = nullptr;
    QAction* file_ = nullptr;
};

} // namespace orvista
