#pragma once

#include "script/ScriptCommands.h"
#include "script/ScriptPage.h"

#include <array>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvista {

/// A line of a script that does nothing: unknown, incomplete, or one too many.
struct ScriptRemark {
    std::size_t line = 0;   ///< from 1
    std::string text;       ///< the line, at most maximumRemarkLength bytes of it
    std::size_t column = 0; ///< from 1, of the command's word or the argument that is wrong; after the
                            ///< line's last byte for one that is missing
    RemarkReason reason = RemarkReason::UnknownCommand;
    std::optional<ScriptArgument> argument; ///< that is wrong
    std::string word;       ///< the command or the wrong argument, at most maximumRemarkLength bytes of it
    std::size_t length = 0; ///< of the word
    bool operator==(const ScriptRemark&) const = default;
};

struct InterpretedScript {
    std::vector<ScriptPage> pages;
    std::vector<ScriptRemark> remarks; ///< the first maximumRemarks
    /// How many there are beyond those, by reason.
    std::array<std::size_t, remarkReasons> moreRemarks{};
};

/// Bounds that keep a hostile script cheap to show.
inline constexpr std::size_t maximumElementsOfAPage = 256;
inline constexpr std::size_t maximumRemarks = 1000;
inline constexpr std::size_t maximumRemarkLength = 200;

/// What a page that draws something but never says for how long is held, in milliseconds: the shortest hold
/// the editor offers.
inline constexpr int defaultHold = 1000;

/// Takes a script apart, line by line. Keywords are known in any case; fields are separated by one or more
/// blanks; numbers above the bounds count as the bound. A page ends at CLEAR and after a leaving effect.
InterpretedScript interpretScript(std::string_view script);

/// The same, but each page is handed over as soon as it is over, and not kept: a long script costs no more
/// memory than its longest page.
InterpretedScript interpretPageByPage(std::string_view script, const std::function<void(ScriptPage&)>& take);

/// The same as interpretScript(), but no further than the first page of which `isEnough` says so.
InterpretedScript interpretUntil(std::string_view script,
                                 const std::function<bool(const ScriptPage&)>& isEnough);

} // namespace orvista
