#pragma once

#include "model/Project.h"
#include "sheets/Sheet.h"

#include <string>
#include <string_view>
#include <vector>

/// What importing a sheet would change, item by item, so that it can be shown and taken or left.
namespace orvista {

/// One text of one item. Texts are device bytes.
struct SheetChange {
    std::string item;        ///< "STDMSG12", "RegVar3"
    std::string_view column; ///< "script", "default", "width", "precision", "on" or "off"
    std::string before;
    std::string after;
    bool operator==(const SheetChange&) const = default;
};

/// Either errors or changes, which may be none.
struct SheetImport {
    std::vector<SheetChange> changes; ///< in the order of the project's tables
    SheetErrors errors;
    /// How many of the changes come from an empty cell, which is a number's default or an empty text.
    std::size_t fromEmptyCells = 0;
};

/// The items that change, each once, in the order of the changes.
std::vector<std::string> changedItems(const std::vector<SheetChange>& changes);

void applyChanges(Project& project, const std::vector<SheetChange>& changes);

} // namespace orvista
