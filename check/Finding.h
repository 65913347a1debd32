#pragma once

#include "check/FindingCounts.h"
#include "check/Rules.h"
#include "model/Place.h"

#include <array>
#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace orvista {

/// One thing that is wrong, or worth a look, in a project.
struct Finding {
    Place place;
    Code code = Code::UnknownCommand;
    std::string text; ///< a sentence: what will happen on the display, and what to do

    /// A warning even where its rule is an error, because nothing is lost or moved by it.
    bool isMild = false;

    const Rule& rule() const { return ruleOf(code); }
    Severity severity() const { return isMild ? Severity::Warning : rule().severity; }
    bool operator==(const Finding&) const = default;
};

inline constexpr std::size_t maximumFindings = 1000;

/// How many there are of each code.
using CodeCounts = std::array<std::size_t, static_cast<std::size_t>(Code::Count)>;

struct Findings {
    std::vector<Finding> list; ///< in order, at most maximumFindings; where there are more, errors first
    FindingCounts counts;      ///< of all, also of those that the list has no room for
    CodeCounts byCode{};       ///< the same of those about items
    /// How many the list has no room for.
    std::size_t notListed() const { return counts.total() - list.size(); }
    bool operator==(const Findings&) const = default;
};

/// The finding that is about the same as one of an earlier check, though other lines have come before it or
/// its sentence says other numbers; null when there is none.
const Finding* sameFinding(const std::vector<Finding>& findings, const Finding& earlier);

/// By item, as far as the findings are listed; those about files are of none.
std::map<Item, FindingCounts> countsByItem(const Findings& findings);

} // namespace orvista
