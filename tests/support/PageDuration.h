#pragma once

#include "display/Programme.h"
#include "display/StepTiming.h"

namespace orvista {

/// Of one page, in milliseconds.
inline std::int64_t pageDuration(const Programme& programme, std::size_t page) {
    const DrawnPage& shown = programme.pages().at(page);
    std::int64_t duration = 0;
    for (const ScriptStep& step : shown.steps)
        duration += stepDuration(shown, step, programme.panel(), programme.formats());
    return duration;
}

} // namespace orvista
