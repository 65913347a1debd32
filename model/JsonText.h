#pragma once

#include <string>
#include <string_view>

namespace orvista {

class JsonValue;

/// JSON as all of the program writes it: UTF-8, and U+FFFD for bytes that are none.
/// \returns a line for each member and item, indented by two blanks, LF after the last one, too
std::string jsonText(const JsonValue& value);
/// \returns one line without blanks between its values, and its LF
std::string jsonLine(const JsonValue& value);
/// \returns the text with its quotation marks
std::string jsonString(std::string_view text);

} // namespace orvista
