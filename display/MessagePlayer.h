#pragma once

#include "display/Programme.h"

#include <cstddef>
#include <cstdint>

namespace orvista {

/// Where a message stands while somebody looks at it: still on a page, at a moment of its round, or playing.
/// It keeps no clock; whoever does tells it the time.
class MessagePlayer {
public:
    explicit MessagePlayer(Programme programme) : programme_(std::move(programme)) {}

    const Programme& programme() const { return programme_; }
    /// Goes on with another text of the message, at the same page or time as far as there is one.
    void show(Programme programme);

    /// Stops on a page as it looks when its entering effect is over; the last one if there are fewer.
    void stopAt(std::size_t page);
    /// Goes to a moment of the round, 0 to its duration, and stops or plays on as before.
    void seek(std::int64_t time);
    /// Runs from `now` on, a clock's milliseconds: from the beginning of the page it stands on, or from where
    /// it was stopped.
    void play(std::int64_t now);
    /// Stops where it is.
    void pause();
    /// Runs up to `now`; without effect unless it plays.
    void advance(std::int64_t now);
    /// The time up to `now` does not count.
    void skip(std::int64_t now) { now_ = now; }

    bool isPlaying() const { return state_ == State::Playing; }
    /// Of what is shown, from 0; 0 also when there is no page.
    std::size_t page() const;
    /// Of the round, in milliseconds, 0 to its duration.
    std::int64_t time() const;
    LedRaster raster(const DisplayValues& values) const;

private:
    enum class State { Still, Paused, Playing };

    Programme programme_;
    State state_ = State::Still;
    std::size_t page_ = 0;  ///< while it is still
    std::int64_t time_ = 0; ///< otherwise
    std::int64_t now_ = 0;
};

} // namespace orvista
