#pragma once

#include "model/Place.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orvista {

enum class Severity { Error, Warning, Note };
/// "error", "warning", "note"
std::string_view severityName(Severity severity);

/// One thing that is wrong, or worth a look, in a project.
struct Finding {
    Place place;
    Severity severity = Severity::Error;
    std::string_view code; ///< "text-cut"; lives as long as the program
    std::string text;      ///< a sentence: what will happen on the display, and what to do
    bool operator==(const Finding&) const = default;
};

inline constexpr std::size_t maximumFindings = 1000;

struct Findings {
    std::vector<Finding> list; ///< in order; at most maximumFindings
    std::size_t errors = 0;    ///< of all, also of those that the list has no room for
    std::size_t warnings = 0;
    std::size_t notes = 0;
    /// How many the list has no room for.
    std::size_t notListed() const { return errors + warnings + notes - list.size(); }
    bool operator==(const Findings&) const = default;
};

} // namespace orvista
