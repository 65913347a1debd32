#include "display/MessagePlayer.h"

#include "display/RasterAt.h"
#include "display/SettledPage.h"

#include <algorithm>
#include <utility>

namespace orvista {

void MessagePlayer::show(Programme programme) {
    programme_ = std::move(programme);
    page_ = std::min(page_, std::max<std::size_t>(programme_.pageCount(), 1) - 1);
    time_ = std::min(time_, programme_.duration());
}

void MessagePlayer::stopAt(std::size_t page) {
    state_ = State::Still;
    page_ = std::min(page, std::max<std::size_t>(programme_.pageCount(), 1) - 1);
}

void MessagePlayer::seek(std::int64_t time) {
    if (state_ == State::Still)
        state_ = State::Paused;
    time_ = std::clamp<std::int64_t>(time, 0, programme_.duration());
}

void MessagePlayer::play(std::int64_t now) {
    if (state_ == State::Still)
        time_ = programme_.pageCount() > 0 ? programme_.pageStart(page_) : 0;
    state_ = State::Playing;
    now_ = now;
}

void MessagePlayer::pause() {
    if (state_ == State::Playing)
        state_ = State::Paused;
}

void MessagePlayer::advance(std::int64_t now) {
    if (state_ != State::Playing)
        return;
    const std::int64_t passed = std::max<std::int64_t>(0, now - now_);
    now_ = now;
    if (programme_.duration() > 0)
        time_ = (time_ + passed) % programme_.duration();
}

std::size_t MessagePlayer::page() const {
    if (state_ == State::Still)
        return page_;
    const Programme::Moment moment = programme_.momentAt(time_);
    return moment.page ? static_cast<std::size_t>(moment.page - programme_.pages().data()) : 0;
}

std::int64_t MessagePlayer::time() const {
    if (state_ != State::Still)
        return time_;
    return programme_.pageCount() > 0 ? settledTime(programme_, page_) : 0;
}

LedRaster MessagePlayer::raster(const DisplayValues& values) const {
    if (state_ == State::Still && programme_.pageCount() > 0)
        return settledPage(programme_, page_, values);
    return rasterAt(programme_, values, time_);
}

} // namespace orvista
