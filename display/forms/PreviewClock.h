#pragma once

#include "display/DisplayValues.h"

#include <cstdint>
#include <functional>

namespace orvista {

/// The time a preview goes by.
struct PreviewClock {
    /// Since any moment; never runs backwards.
    std::function<std::int64_t()> milliseconds;
    /// What fields of time and date show.
    std::function<LocalTime()> localTime;

    static PreviewClock system();
};

} // namespace orvista
