#pragma once

#include <string_view>

namespace orvista {

enum class Severity { Error, Warning, Note };
/// "error", "warning", "note"
std::string_view severityName(Severity severity);

} // namespace orvista
