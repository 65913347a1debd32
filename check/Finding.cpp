#include "check/Finding.h"

#include <algorithm>
#include <tuple>

namespace orvista {

namespace {

/// The place without where in it.
Place subjectOf(Place place) {
    place.line = place.column = place.length = 0;
    return place;
}

} // namespace

const Finding* sameFinding(const std::vector<Finding>& findings, const Finding& earlier) {
    const auto distance = [](std::size_t one, std::size_t other) {
        return std::max(one, other) - std::min(one, other);
    };
    const auto otherness = [&](const Finding& finding) {
        return std::tuple(finding.text != earlier.text, distance(finding.place.line, earlier.place.line),
                          distance(finding.place.column, earlier.place.column));
    };
    const Finding* nearest = nullptr;
    for (const Finding& finding : findings) {
        const bool isCandidate = subjectOf(finding.place) == subjectOf(earlier.place) &&
                                 finding.code == earlier.code &&
                                 (finding.text == earlier.text || finding.place.line == earlier.place.line);
        if (isCandidate && (nearest == nullptr || otherness(finding) < otherness(*nearest)))
            nearest = &finding;
    }
    return nearest;
}

std::map<Item, FindingCounts> countsByItem(const Findings& findings) {
    std::map<Item, FindingCounts> counts;
    for (const Finding& finding : findings.list)
        if (finding.place.file.empty())
            counts[finding.place.item].add(finding.severity(), 1);
    return counts;
}

} // namespace orvista
