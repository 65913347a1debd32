#include "display/forms/BitmapWatch.h"

#include "widgets/ModalDialogs.h"

#include <QEvent>
#include <QWidget>

#include <algorithm>

namespace orvista {

namespace {

bool isSame(const FoundBitmap& one, const FoundBitmap& other) {
    return one.image == other.image && one.error == other.error;
}

} // namespace

BitmapWatch::BitmapWatch(QWidget& widget, std::function<void()> changed)
    : QObject(&widget), widget_(widget), changed_(std::move(changed)) {
    timer_.setInterval(interval);
    connect(&timer_, &QTimer::timeout, this, [this] {
        if (!isModalDialogOpen())
            look();
    });
    widget.installEventFilter(this);
}

void BitmapWatch::watch(const BitmapProvider& bitmaps, std::vector<std::string> names) {
    bitmaps_ = &bitmaps;
    seen_.clear();
    for (std::string& name : names) {
        FoundBitmap found = bitmaps.bitmap(name);
        seen_.emplace_back(std::move(name), std::move(found));
    }
    beginOrEnd();
}

void BitmapWatch::look() {
    const bool isChanged = std::ranges::any_of(
        seen_, [this](const auto& seen) { return !isSame(seen.second, bitmaps_->bitmap(seen.first)); });
    if (isChanged)
        changed_();
}

bool BitmapWatch::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::WindowActivate:
    case QEvent::WindowDeactivate:
    case QEvent::Show:
    case QEvent::Hide:
        beginOrEnd();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void BitmapWatch::beginOrEnd() {
    if (seen_.empty() || !widget_.isVisible() || !widget_.isActiveWindow())
        timer_.stop();
    else if (!timer_.isActive())
        timer_.start();
}

} // namespace orvista
