#include "check/Severity.h"

namespace orvista {

std::string_view severityName(Severity severity) {
    switch (severity) {
    case Severity::Error:
        return "error";
    case Severity::Warning:
        return "warning";
    case Severity::Note:
        return "note";
    }
    return {};
}

} // namespace orvista
