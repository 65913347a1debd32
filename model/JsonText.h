#pragma once

#include <string>

namespace orvista {

class JsonValue;

/// UTF-8, indented by two blanks, a line for each member and item, LF after the last one, too.
std::string jsonText(const JsonValue& value);

} // namespace orvista
