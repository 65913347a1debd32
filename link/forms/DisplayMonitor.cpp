#include "link/forms/DisplayMonitor.h"

#include "link/forms/DisplayReading.h"
#include "model/Windows1252.h"
#include "widgets/ModalDialogs.h"

#include <algorithm>
#include <array>

namespace orvista {

DisplayMonitor::DisplayMonitor(const Project& project, std::uint16_t port, QObject* parent)
    : QObject(parent), project_(project), port_(port), reading_(new DisplayReading(this)) {
    next_.setSingleShot(true);
    connect(&next_, &QTimer::timeout, this, &DisplayMonitor::read);
    connect(reading_, &DisplayReading::done, this, &DisplayMonitor::take);
    connect(reading_, &DisplayReading::failed, this, &DisplayMonitor::fail);
}

void DisplayMonitor::setInterval(Milliseconds interval) {
    interval_ = interval;
    // After a failure it is the pause that counts.
    if (failure_.isEmpty() && next_.isActive() && next_.remainingTimeAsDuration() > interval)
        next_.start(interval);
}

void DisplayMonitor::start() {
    if (isRunning_)
        return;
    isRunning_ = true;
    clear();
    readAfter(Milliseconds(0));
}

void DisplayMonitor::clear() {
    reading_->abort();
    items_.reset();
    failure_.clear();
    failures_ = 0;
    if (isRunning_)
        readAfter(interval_);
    emit changed();
}

void DisplayMonitor::stop() {
    if (!isRunning_)
        return;
    isRunning_ = false;
    next_.stop();
    reading_->abort();
    emit changed();
}

void DisplayMonitor::hold() {
    isHeld_ = true;
    next_.stop();
    reading_->abort();
}

void DisplayMonitor::release() {
    isHeld_ = false;
    if (isRunning_ && !reading_->isUnderWay())
        readAfter(Milliseconds(0));
}

DisplayMonitor::Milliseconds DisplayMonitor::pause() const {
    static constexpr std::array<std::chrono::seconds, 4> pauses{
        std::chrono::seconds(1), std::chrono::seconds(2), std::chrono::seconds(5), std::chrono::seconds(10)};
    return failures_ == 0 ? Milliseconds(0) : Milliseconds(pauses[std::min(failures_, pauses.size()) - 1]);
}

void DisplayMonitor::readAfter(Milliseconds pause) {
    if (!isHeld_)
        next_.start(pause);
}

void DisplayMonitor::read() {
    if (isModalDialogOpen()) {
        readAfter(interval_);
        return;
    }
    // A failure waits for its own pause.
    next_.start(interval_);
    if (!reading_->isUnderWay())
        reading_->begin(utf8FromWindows1252(project_.IP), port_, displayItems(project_));
}

void DisplayMonitor::take(const std::vector<DisplayItem>& items) {
    failures_ = 0;
    failure_.clear();
    items_ = items;
    emit wasRead();
    if (!isModalDialogOpen())
        emit changed();
}

void DisplayMonitor::fail(const QString& reason) {
    failure_ = reason;
    ++failures_;
    readAfter(pause());
    if (!isModalDialogOpen())
        emit changed();
}

} // namespace orvista
