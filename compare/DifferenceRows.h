#pragma once

#include "compare/ProjectComparison.h"
#include "model/Change.h"

#include <cstddef>
#include <span>
#include <string>
#include <vector>

/// Differences one by one, so that each can be looked at and taken over by itself.
namespace orvista {

/// A setting that differs, or a line of a script with the one in its place. Texts are device bytes.
struct DifferenceRow {
    Item item;
    const Field* field = nullptr; ///< null for a line
    std::size_t lineBefore = 0;   ///< of the script, from 1; 0 where the first side has no such line
    std::size_t lineAfter = 0;    ///< the same of the second side
    std::string before;           ///< empty where that side has no such line
    std::string after;
    bool operator==(const DifferenceRow&) const = default;

    bool isLine() const { return field == nullptr; }
};

/// All of them, in the order of the items, fields and lines.
std::vector<DifferenceRow> differenceRows(std::span<const ItemDifference> differences);

/// What makes the first project be as the second one in these rows.
/// \param rows of the two projects as they are now
std::vector<Change> takenOver(const Project& before, const Project& after,
                              std::span<const DifferenceRow> rows);
/// The same changes of a project that may hold other texts than the first one; without those that would
/// change nothing that counts.
std::vector<Change> fitted(std::vector<Change> changes, const Project& project);

} // namespace orvista
