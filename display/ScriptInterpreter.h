#pragma once

#include "display/ScriptPage.h"

#include <string>
#include <string_view>
#include <vector>

namespace orvista {

/// A line of a script that does nothing: unknown, incomplete, or one too many.
struct ScriptRemark {
    std::size_t line; ///< from 1
    std::string text; ///< the line, at most 200 characters of it
    bool operator==(const ScriptRemark&) const = default;
};

struct InterpretedScript {
    std::vector<ScriptPage> pages;
    std::vector<ScriptRemark> remarks; ///< the first 1000
};

/// Bounds that keep a hostile script cheap to show.
inline constexpr std::size_t maximumElementsOfAPage = 256;
inline constexpr std::size_t maximumRemarks = 1000;
inline constexpr std::size_t maximumRemarkLength = 200;
inline constexpr int maximumCoordinate = 1'000'000;    ///< either way
inline constexpr int maximumHold = 3'600'000;          ///< milliseconds
inline constexpr int maximumStepMilliseconds = 60'000; ///< of a move, a fade level, half a blink
inline constexpr int maximumBlinks = 1000;

/// What a page that draws something but never says for how long is held, in milliseconds: the shortest hold
/// the editor offers.
inline constexpr int defaultHold = 1000;

/// Takes a script apart, line by line. Keywords are known in any case; fields are separated by one or more
/// blanks; numbers above the bounds count as the bound. A page ends at CLEAR and after a leaving effect.
InterpretedScript interpretScript(std::string_view script);

} // namespace orvista
