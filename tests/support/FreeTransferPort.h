#pragma once

#include <QRandomGenerator>
#include <QTcpServer>

#include <stdexcept>

namespace orvista::testing {

/// A port that nobody listens on and that the connection dialog can hold: it takes no more than 32767.
/// Programs that run at the same time look in different places.
inline quint16 freeTransferPort() {
    for (int port = QRandomGenerator::global()->bounded(12000, 32000); port < 32768; ++port)
        if (QTcpServer server; server.listen(QHostAddress::LocalHost, static_cast<quint16>(port)))
            return static_cast<quint16>(port);
    throw std::runtime_error("no free port");
}

} // namespace orvista::testing
