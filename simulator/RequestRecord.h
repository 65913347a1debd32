#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

namespace orvista {

/// One line of the device's log.
struct RequestRecord {
    QDateTime time;
    QString peer;     ///< who asked, "127.0.0.1:40312"; empty for what the device did by itself
    QByteArray bytes; ///< the request as it came
    QString words;    ///< the same for people, and what came of it
};

} // namespace orvista
