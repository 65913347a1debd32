#pragma once

#include "simulator/SimulatedDevice.h"

#include <QObject>
#include <QString>
#include <optional>

namespace orvista {

/// Keeps a picture of the panel in a file. With a fixed moment it is written at the start and after every
/// change, as the panel looks that many milliseconds after what it shows began: the same picture every time.
/// Without one it is what the panel shows when write() is called.
class Snapshot final : public QObject {
    Q_OBJECT

public:
    Snapshot(const SimulatedDevice& device, const QString& file, std::optional<qint64> moment,
             QObject* parent = nullptr);

    /// False when the file cannot be written; the old one stays.
    bool write();

signals:
    void written(const QString& file);
    void failed(const QString& reason);

private:
    const SimulatedDevice& device_;
    QString file_;
    std::optional<qint64> moment_;
};

} // namespace orvista
