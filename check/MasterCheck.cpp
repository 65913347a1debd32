#include "check/MasterCheck.h"

#include "check/FindingList.h"

#include <algorithm>

namespace orvista {

namespace {

void count(Findings& findings, Code code, std::size_t number) {
    findings.counts.add(ruleOf(code).severity, number);
    findings.byCode[static_cast<std::size_t>(code)] += number;
}

} // namespace

Code codeOf(PlaceFault fault) {
    switch (fault) {
    case PlaceFault::Unknown:
        return Code::PlaceUnknown;
    case PlaceFault::Width:
        return Code::PlaceWidth;
    case PlaceFault::Value:
        break;
    }
    return Code::PlaceValue;
}

Finding findingOf(const PlaceError& error) {
    return {error.place, codeOf(error.fault), error.text};
}

Findings placeFindings(const Expansion& expansion) {
    Findings findings;
    for (const PlaceError& error : expansion.errors) {
        findings.list.push_back(findingOf(error));
        count(findings, findings.list.back().code, 1);
    }
    // Of those that are not listed it is not known which they are.
    if (expansion.errorsNotListed > 0)
        count(findings, codeOf(expansion.errors.back().fault), expansion.errorsNotListed);
    return findings;
}

Findings MasterCheck::checked(const Project& project, int columns, Notes notes) {
    Findings findings = check_.check(project, bitmaps_, columns, notes);
    for (Finding& finding : findings.list)
        finding.place = master_.inMaster(finding.place);
    return findings;
}

Findings MasterCheck::check(const Expansion& expansion, int columns, Notes notes) {
    Findings findings = placeFindings(expansion);
    append(findings, checked(expansion.project, columns, notes));
    if (findings.notListed() == 0)
        std::ranges::stable_sort(findings.list, {}, &Finding::place);
    return findings;
}

Findings MasterCheck::checkItself(int columns, Notes notes) {
    return checked(master_.itself(), columns, notes);
}

} // namespace orvista
