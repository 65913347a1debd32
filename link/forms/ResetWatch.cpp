#include "link/forms/ResetWatch.h"

#include <QChildEvent>
#include <QTcpSocket>
#include <QVariant>

namespace orvista {

namespace {

constexpr const char* reportedEnd = "orvistaReportedEnd";

} // namespace

ResetWatch::ResetWatch(QTcpSocket& socket) : QObject(&socket), socket_(socket) {
    socket.installEventFilter(this);
}

bool ResetWatch::eventFilter(QObject* watched, QEvent* event) {
    // The notifiers are grandchildren of the socket, made again for each address that is tried.
    if (event->type() == QEvent::ChildAdded)
        static_cast<QChildEvent*>(event)->child()->installEventFilter(this);
    if (event->type() != QEvent::SockAct || socket_.state() != QAbstractSocket::ConnectingState)
        return false;
    if (!watched->property(reportedEnd).isValid()) {
        watched->setProperty(reportedEnd, 1);
        return false;
    }
    // The notifier goes with the connection, which may not end while it is being served.
    if (watched->property(reportedEnd).toInt() == 1)
        QMetaObject::invokeMethod(this, &ResetWatch::wasReset, Qt::QueuedConnection);
    watched->setProperty(reportedEnd, 2);
    return true;
}

} // namespace orvista
