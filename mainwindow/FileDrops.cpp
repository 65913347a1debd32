#include "mainwindow/FileDrops.h"

#include "widgets/ModalDialogs.h"

#include <QDropEvent>
#include <QMimeData>
#include <QUrl>
#include <QWidget>
#include <QWindow>

namespace orvista {

FileDrops::FileDrops(QWidget& window, std::function<bool(const QString&)> takes)
    : QObject(&window), window_(window), takes_(std::move(takes)) {
    window.setAcceptDrops(true);
    window.installEventFilter(this);
}

bool FileDrops::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::Show:
        // The surface hears of a drag before the boxes do.
        if (watched == &window_ && surface_ != window_.windowHandle()) {
            surface_ = window_.windowHandle();
            surface_->installEventFilter(this);
        }
        break;
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop: {
        auto* const drop = static_cast<QDropEvent*>(event);
        const QString file = fileIn(*drop->mimeData());
        if (file.isEmpty())
            break;
        drop->setDropAction(Qt::CopyAction);
        drop->accept();
        if (event->type() == QEvent::Drop)
            QMetaObject::invokeMethod(
                this, [this, file] { emit dropped(file); }, Qt::QueuedConnection);
        return true;
    }
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

QString FileDrops::fileIn(const QMimeData& dragged) const {
    const QList<QUrl> urls = dragged.urls();
    if (urls.size() != 1 || !urls.front().isLocalFile() || isModalDialogOpen())
        return {};
    const QString file = urls.front().toLocalFile();
    return takes_(file) ? file : QString();
}

} // namespace orvista
