#include "simulator/Announcement.h"

#include "simulator/ModbusRequests.h"

namespace orvista {

namespace {

QString endpoint(const QHostAddress& address, quint16 port) {
    const bool isIpv6 = address.protocol() == QAbstractSocket::IPv6Protocol;
    return QStringLiteral("%1:%2")
        .arg(isIpv6 ? "[" + address.toString() + "]" : address.toString())
        .arg(port);
}

} // namespace

QString portRemedy(quint16 port) {
    return QStringLiteral("sudo sysctl net.ipv4.ip_unprivileged_port_start=%1").arg(port);
}

QString modbusLine(const SimulatedDevice& device) {
    const ModbusService& modbus = device.modbus();
    if (modbus.errorText().isEmpty())
        return "Modbus/TCP on " + endpoint(device.settings().listen, modbus.port());
    QString line =
        QStringLiteral("Modbus/TCP not available on %1: %2")
            .arg(endpoint(device.settings().listen, device.settings().modbusPort), modbus.errorText());
    if (modbus.mayNotBind())
        line += QStringLiteral(". Ordinary users may take the port after: %1")
                    .arg(portRemedy(device.settings().modbusPort));
    return line;
}

QString transferLine(const SimulatedDevice& device) {
    const FtpService& transfer = device.transfer();
    if (transfer.port() != 0)
        return "File transfer on " + endpoint(device.settings().listen, transfer.port());
    return QStringLiteral("File transfer not available on %1: %2")
        .arg(endpoint(device.settings().listen, device.settings().transferPort), transfer.errorText());
}

QString logLine(const RequestRecord& record) {
    QStringList parts{record.time.toString("HH:mm:ss.zzz")};
    if (!record.peer.isEmpty())
        parts << record.peer;
    parts << record.words;
    if (!record.bytes.isEmpty()) {
        const std::string_view bytes(record.bytes.constData(), static_cast<std::size_t>(record.bytes.size()));
        parts << "[" + QString::fromStdString(hexBytes(bytes)) + "]";
    }
    return parts.join(QStringLiteral("  "));
}

} // namespace orvista
