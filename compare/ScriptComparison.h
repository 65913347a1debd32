#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// Two scripts side by side, line by line.
namespace orvista {

/// A line of two scripts, without blanks around it, in the order in which both are read.
struct ComparedLine {
    enum class Kind { Same, Removed, Added };
    Kind kind;
    std::string text;             ///< device bytes
    std::size_t numberBefore = 0; ///< in the first script, from 1; 0 for an added line
    std::size_t numberAfter = 0;  ///< in the second script, from 1; 0 for a removed line
    bool operator==(const ComparedLine&) const = default;
};

/// The lines of both scripts that count, as ScriptLines has them; removed ones before those added in their
/// place. Few of them are removed and added, unless the scripts are long and have little in common.
std::vector<ComparedLine> comparedLines(std::string_view before, std::string_view after);

} // namespace orvista
