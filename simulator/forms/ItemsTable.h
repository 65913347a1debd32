#pragma once

#include "simulator/SimulatedDevice.h"

#include <QTreeWidget>

namespace orvista {

/// The coils and registers that are on, with the names the address map gives them.
class ItemsTable final : public QTreeWidget {
    Q_OBJECT

public:
    explicit ItemsTable(const SimulatedDevice& device, QWidget* parent = nullptr);

private:
    void refresh();

    const SimulatedDevice& device_;
};

} // namespace orvista
