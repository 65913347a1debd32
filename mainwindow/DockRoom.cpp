#include "mainwindow/DockRoom.h"

#include <QDockWidget>
#include <QEvent>
#include <QMainWindow>
#include <QScrollArea>
#include <QTabWidget>

#include <algorithm>
#include <utility>

namespace orvista {

DockRoom::DockRoom(QTabWidget& pages, QDockWidget& dock, QMainWindow& window)
    : QObject(&window), pages_(pages), dock_(dock), window_(window) {
    for (auto* const area : pages.findChildren<QScrollArea*>()) {
        if (pages.indexOf(area) < 0)
            continue;
        area->installEventFilter(this);
        area->widget()->installEventFilter(this);
    }
    dock.installEventFilter(this);
    connect(&pages, &QTabWidget::currentChanged, this, &DockRoom::fitSoon);
}

bool DockRoom::eventFilter(QObject* /*watched*/, QEvent* event) {
    const QEvent::Type type = event->type();
    if (type == QEvent::Resize || type == QEvent::LayoutRequest || type == QEvent::Show)
        fitSoon();
    return false;
}

void DockRoom::fitSoon() {
    // The window gives its parts their places one after the other.
    if (dock_.isVisible() && !std::exchange(isFitting_, true))
        QMetaObject::invokeMethod(this, &DockRoom::fit, Qt::QueuedConnection);
}

void DockRoom::fit() {
    isFitting_ = false;
    const auto* const area = qobject_cast<QScrollArea*>(pages_.currentWidget());
    if (!dock_.isVisible() || !area)
        return;
    if (dock_.height() != given_)
        wanted_ = dock_.height(); // the user's choice, or the first one
    const int spare = area->viewport()->height() - area->widget()->minimumSizeHint().height();
    // The dock's own hint knows no more than the height that it was allowed.
    const int least = dock_.widget()->minimumSizeHint().height();
    const int most = std::max(dock_.height() + spare, least);
    dock_.setMaximumHeight(most);
    given_ = std::min(wanted_, most);
    if (dock_.height() < given_)
        window_.resizeDocks({&dock_}, {given_}, Qt::Vertical);
}

} // namespace orvista
