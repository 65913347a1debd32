#include "link/ftp/TransferWatch.h"

namespace orvista {

TransferWatch::TransferWatch(Time start, std::chrono::milliseconds timeout)
    : timeout_(timeout), lastHeard_(start), samples_{{start, 0}} {}

bool TransferWatch::isOver(Time now, std::int64_t moved) {
    if (moved != lastMoved_) {
        lastMoved_ = moved;
        lastHeard_ = now;
    }
    constexpr std::chrono::seconds sampleDistance{1};
    if (now - samples_.back().time >= sampleDistance)
        samples_.push_back({now, moved});
    while (samples_.size() > 1 && now - samples_[1].time >= window)
        samples_.pop_front();
    const bool hasRunAWindow = now - samples_.front().time >= window;
    return isSilent(now) || (hasRunAWindow && moved - samples_.front().moved < leastInWindow);
}

} // namespace orvista
