#include "mainwindow/AddressOffer.h"

#include "mainwindow/PanelDock.h"
#include "model/Project.h"
#include "model/Windows1252.h"

#include <utility>

namespace orvista {

namespace {

/// Of the line in the dock, and of its button.
QString addressOffer() {
    return QStringLiteral("UseAddress");
}

} // namespace

AddressOffer::AddressOffer(const Project& project, PanelDock& dock, std::function<void(const QString&)> use,
                           QObject* parent)
    : QObject(parent), project_(project), dock_(dock), use_(std::move(use)) {}

QString AddressOffer::ownAddress() const {
    return QString::fromStdString(utf8FromWindows1252(project_.IP)).trimmed();
}

void AddressOffer::offer(const QString& address) {
    offeredBeside_ = ownAddress();
    if (address == offeredBeside_)
        return;
    dock_.offer({addressOffer(),
                 tr("Downloaded from %1; the System page says %2").arg(address, offeredBeside_),
                 tr("Use %1").arg(address), [this, address] { use_(address); }});
}

void AddressOffer::follow() {
    if (ownAddress() != offeredBeside_ || project_.ProjName.empty())
        dock_.withdraw(addressOffer());
}

} // namespace orvista
