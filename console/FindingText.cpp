#include "console/FindingText.h"

#include "model/Numbers.h"

namespace orvista::console {

std::string findingText(const std::string& project, const Finding& finding) {
    std::string text = project + ":" + finding.item;
    if (finding.line > 0)
        text += ":" + decimalText(static_cast<std::int64_t>(finding.line)) + ":" +
                decimalText(static_cast<std::int64_t>(finding.column));
    return text.append(": ")
        .append(severityName(finding.severity))
        .append(": ")
        .append(finding.text)
        .append(" [")
        .append(finding.code)
        .append("]");
}

} // namespace orvista::console
