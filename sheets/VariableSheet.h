#pragma once

#include "sheets/SheetImport.h"

#include <string>
#include <string_view>

/// The display settings of the 96 variables as a table.
namespace orvista {

/// \returns UTF-8 with its mark
std::string variableSheet(const Project& project);

/// What a sheet changes in the project. Cells that the project has already, and defaults that are the same
/// number, are no change and not looked at further.
SheetImport importVariables(std::string_view bytes, const Project& project);

} // namespace orvista
