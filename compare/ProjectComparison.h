#pragma once

#include "compare/ScriptComparison.h"
#include "model/Change.h"
#include "model/Project.h"

#include <vector>

/// What differs between two projects for the display: what is read of its files. The start of the regular
/// messages and the play list are never read.
namespace orvista {

struct ItemDifference {
    Item item;
    std::vector<Change> fields;      ///< of what is no message; those that no reader reads left out
    std::vector<ComparedLine> lines; ///< of a message, the same ones included
    bool operator==(const ItemDifference&) const = default;
};

std::vector<ItemDifference> compareItems(const Project& before, const Project& after);

} // namespace orvista
