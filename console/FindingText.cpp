#include "console/FindingText.h"

#include "model/Numbers.h"

namespace orvista::console {

std::string findingText(const std::string& project, const Finding& finding) {
    std::string text = project + ":" + nameOf(finding.place);
    if (finding.place.line > 0)
        text += ":" + decimalText(finding.place.line);
    if (finding.place.column > 0)
        text += ":" + decimalText(finding.place.column);
    return text.append(": ")
        .append(severityName(finding.severity()))
        .append(": ")
        .append(finding.text)
        .append(" [")
        .append(finding.rule().name)
        .append("]");
}

} // namespace orvista::console
