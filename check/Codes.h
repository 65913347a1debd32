#pragma once

#include "check/Finding.h"

#include <string_view>

/// What a check can find.
namespace orvista::codes {

struct Code {
    std::string_view name;
    Severity severity;
};

inline constexpr Code unknownCommand{"unknown-command", Severity::Error};
inline constexpr Code badArgument{"bad-argument", Severity::Error};
inline constexpr Code variableRange{"variable-range", Severity::Error};
inline constexpr Code pageFull{"page-full", Severity::Error};
inline constexpr Code missingBitmap{"missing-bitmap", Severity::Error};
inline constexpr Code unreadableBitmap{"unreadable-bitmap", Severity::Error};
inline constexpr Code reservedLine{"reserved-line", Severity::Error};
inline constexpr Code lostMessage{"lost-message", Severity::Error};
inline constexpr Code addressRange{"address-range", Severity::Error};
inline constexpr Code addressOverlap{"address-overlap", Severity::Error};
inline constexpr Code regularStart{"regular-start", Severity::Error};
inline constexpr Code textCut{"text-cut", Severity::Warning};
inline constexpr Code fieldCut{"field-cut", Severity::Warning};
inline constexpr Code bitmapCut{"bitmap-cut", Severity::Warning};
inline constexpr Code fieldGap{"field-gap", Severity::Warning};
inline constexpr Code fieldOverlap{"field-overlap", Severity::Warning};
inline constexpr Code invisible{"invisible", Severity::Warning};
inline constexpr Code neverSeen{"never-seen", Severity::Warning};
inline constexpr Code badDefault{"bad-default", Severity::Warning};
inline constexpr Code badFormat{"bad-format", Severity::Warning};
inline constexpr Code notInUse{"not-in-use", Severity::Note};

} // namespace orvista::codes
