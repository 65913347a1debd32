#pragma once

#include "check/Finding.h"

#include <cstddef>
#include <map>
#include <string>

namespace orvista {

/// How much was found.
struct FindingCounts {
    std::size_t errors = 0;
    std::size_t warnings = 0;
    std::size_t notes = 0;
    bool operator==(const FindingCounts&) const = default;
};

FindingCounts countsOf(const Findings& findings);
/// By item, as far as the findings are listed.
std::map<Item, FindingCounts> countsByItem(const Findings& findings);

/// "1 error, 2 warnings"; empty for none.
std::string countsText(const FindingCounts& counts);

} // namespace orvista
