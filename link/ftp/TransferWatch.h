#pragma once

#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>

namespace orvista {

/// Tells when a transfer is to be given up: after silence, and when it hardly moves. All of it is what the
/// caller says; nothing is measured here.
class TransferWatch {
public:
    using Time = std::chrono::steady_clock::time_point;
    /// Where the caller's time comes from.
    using Clock = std::function<Time()>;

    /// A transfer that has run for this time must have moved the least bytes in the last of its seconds. A
    /// device that sends a byte now and then would otherwise hold the window for ever.
    static constexpr std::chrono::seconds window{30};
    static constexpr std::int64_t leastInWindow = 1024;

    /// \param timeout how long the other end may be silent
    TransferWatch(Time start, std::chrono::milliseconds timeout);

    /// The other end answered a command.
    void noteAnswer(Time now) { lastHeard_ = now; }
    /// True when the transfer is to end. \param moved its bytes so far, in either direction
    bool isOver(Time now, std::int64_t moved);
    /// Whether it is silence that ends it.
    bool isSilent(Time now) const { return now - lastHeard_ >= timeout_; }

private:
    struct Sample {
        Time time;
        std::int64_t moved;
    };

    std::chrono::milliseconds timeout_;
    Time lastHeard_;
    std::int64_t lastMoved_ = 0;
    std::deque<Sample> samples_; ///< about one a second; the first is the newest that is a window old
};

} // namespace orvista
