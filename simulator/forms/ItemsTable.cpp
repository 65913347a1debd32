#include "simulator/forms/ItemsTable.h"

#include "simulator/MemoryItems.h"

#include <QHeaderView>
#include <QScrollBar>

namespace orvista {

ItemsTable::ItemsTable(const SimulatedDevice& device, QWidget* parent)
    : QTreeWidget(parent), device_(device) {
    setObjectName("items");
    setAccessibleName(tr("Coils and registers that are on"));
    setHeaderLabels({tr("Address"), tr("Name"), tr("Value")});
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setAlternatingRowColors(true);
    header()->setStretchLastSection(true);
    connect(&device, &SimulatedDevice::changed, this, &ItemsTable::refresh);
    refresh();
}

void ItemsTable::refresh() {
    const int scrolled = verticalScrollBar()->value();
    clear();
    for (const MemoryItem& item : itemsOn(device_.project(), device_.memory())) {
        const QString kind = item.kind == MemoryKind::Coil ? tr("Coil %1") : tr("Register %1");
        addTopLevelItem(new QTreeWidgetItem(QStringList{
            kind.arg(item.address), QString::fromStdString(item.name), QString::fromStdString(item.value)}));
    }
    resizeColumnToContents(0);
    resizeColumnToContents(1);
    verticalScrollBar()->setValue(scrolled);
}

} // namespace orvista
