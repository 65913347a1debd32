#include "mainwindow/FileDrops.h"

#include "mainwindow/Guard.h"
#include "widgets/ModalDialogs.h"
#include "widgets/PathText.h"

#include <QDropEvent>
#include <QMimeData>
#include <QUrl>
#include <QWidget>
#include <QWindow>

#include <algorithm>

namespace orvista {

FileDrops::FileDrops(QWidget& window, Messages& messages, std::vector<Kind> kinds)
    : QObject(&window), window_(window), messages_(messages), kinds_(std::move(kinds)) {
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
                this, [this, file] { open(file); }, Qt::QueuedConnection);
        return true;
    }
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

QString FileDrops::fileIn(const QMimeData& dragged) const {
    const QList<QUrl> urls = dragged.urls();
    if (urls.size() != 1 || !urls.front().isLocalFile())
        return {};
    const QString file = urls.front().toLocalFile();
    return kindOf(file) ? file : QString();
}

const FileDrops::Kind* FileDrops::kindOf(const QString& file) const {
    const auto kind = std::ranges::find_if(kinds_, [&file](const Kind& kind) {
        return file.endsWith(kind.ending, Qt::CaseInsensitive) && kind.isTakenNow();
    });
    return kind == kinds_.end() || isModalDialogOpen() ? nullptr : &*kind;
}

void FileDrops::open(const QString& file) {
    if (const Kind* const kind = kindOf(file))
        runGuarded(messages_, [kind, &file] { kind->open(pathFromShown(file)); });
}

} // namespace orvista
