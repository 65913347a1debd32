#pragma once

#include "simulator/RequestRecord.h"
#include "simulator/SimulatedDevice.h"

#include <QString>
#include <QStringList>

/// What the program tells about itself, for people and for scripts that start it.
namespace orvista {

/// "Modbus/TCP on 127.0.0.1:502", or why not and what helps.
QString modbusLine(const SimulatedDevice& device);
/// "File transfer on 127.0.0.1:7000", or why not.
QString transferLine(const SimulatedDevice& device);

/// The one command after which ordinary users may take the Modbus port.
QString portRemedy(quint16 port);

/// "14:05:09.123  127.0.0.1:40312  Write Single Coil 100: on  [01 02 ...]"
QString logLine(const RequestRecord& record);

} // namespace orvista
