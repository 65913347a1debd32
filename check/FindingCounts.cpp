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

void FindingCounts::add(Severity severity, std::size_t number) {
    switch (severity) {
    case Severity::Error:
        errors += number;
        break;
    case Severity::Warning:
        warnings += number;
        break;
    case Severity::Note:
        notes += number;
        break;
    }
}

FindingCounts& FindingCounts::operator-=(const FindingCounts& others) {
    errors -= others.errors;
    warnings -= others.warnings;
    notes -= others.notes;
    return *this;
}

FindingCounts& FindingCounts::operator+=(const FindingCounts& others) {
    errors += others.errors;
    warnings += others.warnings;
    notes += others.notes;
    return *this;
}

std::string countsText(const FindingCounts& counts) {
    std::string text;
    addCount(text, counts.errors, Severity::Error);
    addCount(text, counts.warnings, Severity::Warning);
    addCount(text, counts.notes, Severity::Note);
    return text;
}

} // namespace orvista
