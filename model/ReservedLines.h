#pragma once

#include <string_view>

/// The lines that part the messages of a device file, and the files within a project file.
namespace orvista {

inline constexpr std::string_view messageStart = "DEFMSG";
inline constexpr std::string_view messageEnd = "ENDMSG";

/// Whether a line of a script would be taken for one of these when the project is read: trimmed of blanks it
/// begins with messageStart or messageEnd, or is the header of a section, in any case.
bool isReservedLine(std::string_view line);

} // namespace orvista
