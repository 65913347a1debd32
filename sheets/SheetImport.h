#pragma once

#include "model/Change.h"
#include "sheets/Sheet.h"

#include <cstddef>
#include <vector>

namespace orvista {

/// What importing a sheet would change, so that it can be shown and taken or left: either errors or changes,
/// which may be none.
struct SheetImport {
    std::vector<Change> changes; ///< in the order of the project's tables
    SheetErrors errors;
    SheetErrors notes; ///< no errors: what was taken where a cell left it open
    /// How many of the changes come from an empty cell, which is a number's default or an empty text.
    std::size_t fromEmptyCells = 0;
};

} // namespace orvista
