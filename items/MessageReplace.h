#pragma once

#include "items/TextSearch.h"
#include "model/Change.h"
#include "model/Project.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// Replacing a text in the scripts of all messages, place by place.
namespace orvista {

/// What a place belongs to.
enum class ReplaceWhere {
    Text,   ///< that is shown
    Bitmap, ///< its name
    Other   ///< commands, numbers, and lines that are none
};

/// One place where the text stands. Texts are device bytes.
struct ReplaceHit {
    Item message;
    std::size_t at = 0;   ///< of the script's bytes
    std::size_t line = 0; ///< of the script, from 1
    ReplaceWhere where = ReplaceWhere::Other;
    std::string before; ///< the line, or what is around the place in a long one
    std::string after;  ///< the same with this one place replaced
    bool operator==(const ReplaceHit&) const = default;
};

/// More places are not looked for.
inline constexpr std::size_t maximumReplaceHits = 1000;

struct ReplaceHits {
    std::vector<ReplaceHit> list; ///< by message and place; none overlap
    bool isComplete = true;       ///< false where there are more
};

ReplaceHits findToReplace(const Project& project, const std::string& wanted, std::string_view replacement,
                          Case letters);

/// What replaces these places; a message of which nothing is left becomes "CLEAR".
/// \param hits some of those that were found, in their order, in the same project with the same texts
std::vector<Change> replacedScripts(const Project& project, const std::vector<ReplaceHit>& hits,
                                    std::size_t length, std::string_view replacement);

} // namespace orvista
