#include "check/AllDisplaysCheck.h"

#include "model/Numbers.h"

#include <tuple>
#include <utility>

namespace orvista {

bool AllDisplaysCheck::Before::operator()(const Finding& one, const Finding& other) const {
    const auto order = [](const Finding& finding) {
        return std::tie(finding.place, finding.code, finding.text, finding.isMild);
    };
    return order(one) < order(other);
}

AllDisplaysCheck::AllDisplaysCheck(std::shared_ptr<const Master> master, Displays displays,
                                   const BitmapProvider& bitmaps, int columns, Notes notes)
    : master_(std::move(master)),
      displays_(std::move(displays)),
      columns_(columns),
      notes_(notes),
      check_(*master_, bitmaps) {}

void AllDisplaysCheck::goOn() {
    const FleetDisplay& display = (*displays_)[checked_];
    const Findings found = check_.check(master_->expand(display), display.columns.value_or(columns_), notes_);
    for (const Finding& finding : found.list) {
        const auto known = found_.find(finding);
        if (known == found_.end() && found_.size() < maximumFindings)
            found_.emplace(finding, Displayed{checked_, checked_});
        else if (known == found_.end())
            notKept_.add(finding.severity(), 1);
        else if (std::exchange(known->second.last, checked_) != checked_)
            ++known->second.count;
    }
    ++checked_;
}

Findings AllDisplaysCheck::findings() const {
    Findings findings;
    findings.counts = notKept_;
    for (const auto& [finding, displayed] : found_) {
        findings.list.push_back(finding);
        findings.counts.add(finding.severity(), 1);
        ++findings.byCode[static_cast<std::size_t>(finding.code)];
    }
    return findings;
}

std::string AllDisplaysCheck::displaysText(const Finding& finding) const {
    const auto found = found_.find(finding);
    if (found == found_.end())
        return {};
    const std::string& first = (*displays_)[found->second.first].name;
    const std::size_t more = found->second.count - 1;
    return more == 0 ? first : first + " and " + decimalText(more) + " more";
}

} // namespace orvista
