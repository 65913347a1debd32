#pragma once

#include "sheets/Sheet.h"

#include <string>

/// Tables that a command is given.
namespace orvista::console {

/// Up to one byte more than a sheet may have: the core tells of longer ones.
/// \throws CommandFailure
std::string sheetBytes(const std::string& path);

/// To standard error, a line each.
void reportErrors(const std::string& path, const SheetErrors& errors);

} // namespace orvista::console
