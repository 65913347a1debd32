#pragma once

#include "sheets/Sheet.h"

#include <string>
#include <string_view>

/// Tables that a command is given: a file, a pipe, or standard input, which is called "-".
namespace orvista::console {

inline constexpr std::string_view standardInput = "-";

/// Up to one byte more than a sheet may have: the core tells of longer ones. Waits for what comes of a pipe.
/// \throws CommandFailure
std::string sheetBytes(const std::string& path);

/// As messages name it: "standard input", or the path.
std::string sheetName(const std::string& path);

/// The path of a table to be read or written. Projects are files, too, so that either order looks right.
/// \throws CommandFailure for a project's name
const std::string& expectedTable(const std::string& path);

/// What the paths in a table are relative to, with a separator at its end: the folder of a file; empty for
/// the working folder, which standard input and pipes are read in.
std::string folderOfSheet(const std::string& path);

/// To standard error, a line each.
void reportErrors(const std::string& path, const SheetErrors& errors);

} // namespace orvista::console
