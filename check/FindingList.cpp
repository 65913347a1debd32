#include "check/FindingList.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <tuple>

namespace orvista {

namespace {

void addCounts(Findings& findings, const Findings& others) {
    findings.counts += others.counts;
    std::ranges::transform(findings.byCode, others.byCode, findings.byCode.begin(), std::plus<>());
}

} // namespace

Findings FindingList::merged(std::vector<FindingList> lists) {
    Findings all;
    for (FindingList& list : lists) {
        addCounts(all, list.findings_);
        std::ranges::move(list.findings_.list, std::back_inserter(all.list));
    }
    const auto place = [](const Finding& finding) {
        return std::tuple(finding.place.line, finding.place.column);
    };
    // Mostly one list alone holds findings, in order.
    if (!std::ranges::is_sorted(all.list, {}, place))
        std::ranges::stable_sort(all.list, {}, place);
    if (all.list.size() > maximumFindings)
        all.list.resize(maximumFindings);
    return all;
}

Findings FindingList::sorted() && {
    std::vector<FindingList> alone;
    alone.push_back(std::move(*this));
    return merged(std::move(alone));
}

void append(Findings& findings, const Findings& later) {
    addCounts(findings, later);
    const std::size_t room = maximumFindings - findings.list.size();
    std::ranges::copy_n(later.list.begin(), static_cast<std::ptrdiff_t>(std::min(room, later.list.size())),
                        std::back_inserter(findings.list));
}

} // namespace orvista
