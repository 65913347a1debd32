#pragma once

#include "compare/FileComparison.h"
#include "compare/ScriptComparison.h"
#include "model/Change.h"
#include "model/Project.h"

#include <vector>

/// What differs between two projects for the display: what is read of its files, and the bitmaps. The start
/// of the regular messages and the play list are never read.
namespace orvista {

struct ItemDifference {
    Item item;
    std::vector<Change> fields;      ///< of what is no message; those that no reader reads left out
    std::vector<ComparedLine> lines; ///< of a message, the same ones included
    bool operator==(const ItemDifference&) const = default;
};

struct ProjectDifferences {
    std::vector<ItemDifference> items; ///< in the order address map, RegVar, CoilVar, STDMSG, ALTMSG
    std::vector<FileDifference> bitmaps;
    bool none() const { return items.empty() && bitmaps.empty(); }
};

std::vector<ItemDifference> compareItems(const Project& before, const Project& after);

/// One side of a comparison.
struct ComparedProject {
    const Project& project;
    std::vector<NamedFile> bitmaps;
};

/// \throws std::system_error as compareFiles does
ProjectDifferences compareProjects(const ComparedProject& before, const ComparedProject& after);

} // namespace orvista
