#include "simulator/Snapshot.h"

#include "widgets/PanelPicture.h"

#include <QSaveFile>

namespace orvista {

namespace {

constexpr int snapshotCell = 8;

} // namespace

Snapshot::Snapshot(const SimulatedDevice& device, const QString& file, std::optional<qint64> moment,
                   QObject* parent)
    : QObject(parent), device_(device), file_(file), moment_(moment) {
    if (moment_)
        connect(&device, &SimulatedDevice::changed, this, &Snapshot::write);
}

bool Snapshot::write() {
    const LedRaster raster = moment_ ? device_.rasterAt(*moment_) : device_.raster();
    QSaveFile file(file_);
    if (file.open(QIODevice::WriteOnly) &&
        PanelPicture(raster.size(), snapshotCell).image(raster).save(&file, "PNG") && file.flush() &&
        file.commit()) {
        emit written(file_);
        return true;
    }
    emit failed(file.errorString());
    return false;
}

} // namespace orvista
