#pragma once

#include <optional>
#include <string_view>

/// The lines that part the messages of a device file, and the files within a project file.
namespace orvista {

inline constexpr std::string_view messageStart = "DEFMSG";
inline constexpr std::string_view messageEnd = "ENDMSG";

/// What a line of a script would be taken for when the project is read.
enum class ReservedLine { MessageStart, MessageEnd, SectionHeader };

/// Nothing for a line that is only a line: trimmed of blanks it neither begins with messageStart or
/// messageEnd, nor is it the header of a section, in any case.
std::optional<ReservedLine> reservedLine(std::string_view line);

} // namespace orvista
