#include "model/ReservedLines.h"

#include "model/ProjectFileSections.h"
#include "model/Text.h"

namespace orvista {

std::optional<ReservedLine> reservedLine(std::string_view line) {
    const std::string_view text = trimBlanks(line);
    if (startsWithIgnoringCase(text, messageStart))
        return ReservedLine::MessageStart;
    if (startsWithIgnoringCase(text, messageEnd))
        return ReservedLine::MessageEnd;
    if (DocMgrModule::isSectionHeader(text))
        return ReservedLine::SectionHeader;
    return std::nullopt;
}

} // namespace orvista
