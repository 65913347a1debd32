#include "model/ReservedLines.h"

#include "model/ProjectFileSections.h"
#include "model/Text.h"

namespace orvista {

bool isReservedLine(std::string_view line) {
    const std::string_view text = trimBlanks(line);
    return startsWithIgnoringCase(text, messageStart) || startsWithIgnoringCase(text, messageEnd) ||
           DocMgrModule::isSectionHeader(text);
}

} // namespace orvista
