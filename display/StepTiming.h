#pragma once

#include "display/Programme.h"
#include "display/ScriptPage.h"

#include <cstdint>

namespace orvista {

/// Levels of a fading effect: as many as its pattern of 4 x 4 dots can tell apart.
inline constexpr int fadeLevels = 16;

/// How far an entering or leaving page travels, in dots: the panel's size, or the page's where it moves
/// with its far end ahead or is to pass completely.
std::int64_t scrollDistance(const ScriptPage& page, const ScriptStep& step, PanelSize panel,
                            const FieldFormats& formats);

/// In milliseconds.
std::int64_t stepDuration(const ScriptPage& page, const ScriptStep& step, PanelSize panel,
                          const FieldFormats& formats);

} // namespace orvista
