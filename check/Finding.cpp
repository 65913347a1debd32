#include "check/Finding.h"

namespace orvista {

std::map<Item, FindingCounts> countsByItem(const Findings& findings) {
    std::map<Item, FindingCounts> counts;
    for (const Finding& finding : findings.list)
        counts[finding.place.item].add(finding.rule().severity, 1);
    return counts;
}

} // namespace orvista
