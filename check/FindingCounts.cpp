#include "check/FindingCounts.h"

#include "model/Numbers.h"

#include <cstdint>
#include <string_view>

namespace orvista {

namespace {

void addCount(std::string& text, std::size_t count, Severity severity) {
    if (count == 0)
        return;
    text.append(text.empty() ? "" : ", ").append(countedText(count, severityName(severity)));
}

} // namespace

FindingCounts countsOf(const Findings& findings) {
    return {findings.errors, findings.warnings, findings.notes};
}

std::map<Item, FindingCounts> countsByItem(const Findings& findings) {
    std::map<Item, FindingCounts> counts;
    for (const Finding& finding : findings.list) {
        FindingCounts& ofItem = counts[finding.place.item];
        switch (finding.severity) {
        case Severity::Error:
            ++ofItem.errors;
            break;
        case Severity::Warning:
            ++ofItem.warnings;
            break;
        case Severity::Note:
            ++ofItem.notes;
            break;
        }
    }
    return counts;
}

std::string countsText(const FindingCounts& counts) {
    std::string text;
    addCount(text, counts.errors, Severity::Error);
    addCount(text, counts.warnings, Severity::Warning);
    addCount(text, counts.notes, Severity::Note);
    return text;
}

} // namespace orvista
