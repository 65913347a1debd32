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

bool isListedFirst(const Finding& finding) {
    return finding.severity() == Severity::Error;
}

/// So that those that matter most are listed.
void cutToMaximum(std::vector<Finding>& list) {
    std::stable_partition(list.begin(), list.end(), isListedFirst);
    list.resize(std::min(list.size(), maximumFindings));
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
        cutToMaximum(all.list);
    return all;
}

Findings FindingList::sorted() && {
    std::vector<FindingList> alone;
    alone.push_back(std::move(*this));
    return merged(std::move(alone));
}

void append(Findings& findings, const Findings& later) {
    addCounts(findings, later);
    const bool isFull = findings.list.size() == maximumFindings;
    std::ranges::copy_if(later.list, std::back_inserter(findings.list),
                         [isFull](const Finding& finding) { return !isFull || isListedFirst(finding); });
    if (!later.list.empty() && findings.counts.total() > maximumFindings)
        cutToMaximum(findings.list);
}

} // namespace orvista
