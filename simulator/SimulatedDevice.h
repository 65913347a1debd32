#pragma once

#include "display/Programme.h"
#include "link/DisplayAddress.h"
#include "model/Project.h"
#include "simulator/DeviceFolder.h"
#include "simulator/DeviceMemory.h"
#include "simulator/Faults.h"
#include "simulator/FtpService.h"
#include "simulator/ModbusService.h"
#include "simulator/RequestRecord.h"

#include <QDateTime>
#include <QElapsedTimer>
#include <QHostAddress>
#include <QObject>
#include <optional>
#include <string>

namespace orvista {

struct DeviceSettings {
    QHostAddress listen = QHostAddress(QHostAddress::LocalHost);
    quint16 modbusPort = modbusTcp.port;
    quint16 transferPort = fileTransfer.port;
    std::string root;               ///< the folder of the device's files, UTF-8; must exist
    int columns = 128;              ///< dots across the panel, 1 to PanelSize::maximumColumns
    std::optional<QDateTime> clock; ///< the device's clock stands still at this time
};

/// A message display without its hardware: its memory, its files, its two services and what its panel shows.
class SimulatedDevice final : public QObject {
    Q_OBJECT

public:
    SimulatedDevice(const DeviceSettings& settings, const Faults& faults, QObject* parent = nullptr);

    /// Each takes its port; false when it could not, and the service knows why.
    bool startModbus() { return modbus_.start(settings_.listen, settings_.modbusPort); }
    bool startTransfer() { return transfer_.start(settings_.listen, settings_.transferPort); }
    const ModbusService& modbus() const { return modbus_; }
    const FtpService& transfer() const { return transfer_; }
    const DeviceSettings& settings() const { return settings_; }

    const Faults& faults() const { return faults_; }
    void setFaults(const Faults& faults);

    /// Takes the device files as they lie in the folder. The variables start from their defaults again; the
    /// messages that are on stay on.
    void loadFiles();
    /// All coils off, all registers 0.
    void switchEverythingOff();

    const Project& project() const { return project_; }
    const DeviceMemory& memory() const { return memory_; }
    MessageCoils messageCoils() const;
    /// What the panel shows now, and `milliseconds` after what it shows last began.
    LedRaster raster() const { return rasterAt(running_.elapsed()); }
    LedRaster rasterAt(qint64 milliseconds) const;

signals:
    void logged(const orvista::RequestRecord& record);
    /// Coils, registers or files changed, and with them perhaps the panel.
    void changed();

private:
    void takeMemory();
    void beginProgramme();
    DisplayValues values() const;
    void note(const QString& words);
    void noteIdleLine(const std::string& where, std::size_t line, const std::string& text);

    DeviceSettings settings_;
    Faults faults_;
    DeviceMemory memory_;
    DeviceFolder folder_;
    Project project_;
    PlayList playList_ = PlayList::inOrder();
    MessageCoils shown_;
    Programme programme_;
    QElapsedTimer running_;
    ModbusService modbus_;
    FtpService transfer_;
};

} // namespace orvista
