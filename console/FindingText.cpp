#include "console/FindingText.h"

#include "model/Numbers.h"

namespace orvista::console {

std::string placeText(const Place& place) {
    std::string text = nameOf(place);
    if (place.line > 0)
        text += ":" + decimalText(place.line);
    if (place.column > 0)
        text += ":" + decimalText(place.column);
    return text;
}

std::string findingText(const std::string& project, const Finding& finding) {
    std::string text = project + ":" + placeText(finding.place);
    return text.append(": ")
        .append(severityName(finding.severity()))
        .append(": ")
        .append(finding.text)
        .append(" [")
        .append(finding.rule().name)
        .append("]");
}

} // namespace orvista::console
