#pragma once

#include "display/DrawnPage.h"
#include "display/FieldFormats.h"
#include "display/LedRaster.h"
#include "display/PageLayout.h"

#include <cstdint>

namespace orvista {

/// Levels of a fading effect: as many as its pattern of 4 x 4 dots can tell apart.
inline constexpr int fadeLevels = 16;

inline bool isSideways(Effect effect) {
    return effect == Effect::Left || effect == Effect::Right;
}

/// How far an entering or leaving page travels, in dots: the panel's size, or the page's where it moves
/// with its far end ahead or is to pass completely.
std::int64_t scrollDistance(const DrawnPage& page, const ScriptStep& step, PanelSize panel,
                            const FieldFormats& formats);

/// How many moves an entering or leaving page takes for a distance.
std::int64_t moveCount(const ScriptStep& step, std::int64_t distance);

/// Where the page is after `moves` moves of an entering or leaving effect other than FADE.
Offset scrolled(const ScriptStep& step, std::int64_t distance, std::int64_t moves);

/// Whether a step takes any time.
bool lasts(const ScriptStep& step);

/// In milliseconds.
std::int64_t stepDuration(const DrawnPage& page, const ScriptStep& step, PanelSize panel,
                          const FieldFormats& formats);

} // namespace orvista
