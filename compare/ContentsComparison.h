#pragma once

#include "compare/DisplayContents.h"
#include "compare/ProjectComparison.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// Whether a display holds what an upload sends: the one answer to that question.
namespace orvista {

/// Two files of one name, from the first side to the second.
enum class HeldState {
    Same,      ///< byte for byte
    Equal,     ///< a device file in which its reader finds the same
    Different, ///< or its reader cannot say
    Missing,   ///< on the second side
    Extra      ///< only on the second side
};

struct HeldAnswer {
    std::string name; ///< as the first side spells it, where it has the file; UTF-8
    HeldState state = HeldState::Same;
    /// Whether the display would show something else for it; false for the play list and for bitmaps that no
    /// message shows.
    bool counts = false;
    std::optional<std::uint64_t> sizeBefore; ///< in bytes; nothing where that side has no such file
    std::optional<std::uint64_t> sizeAfter;
    std::optional<std::uint64_t> firstOffset; ///< of the bytes that differ, from 0, where both have the file

    bool isWell() const { return state == HeldState::Same || state == HeldState::Equal; }
};

struct ContentsComparison {
    std::vector<HeldAnswer> files;     ///< the device files, in their order
    std::vector<HeldAnswer> bitmaps;   ///< of both sides, by name
    std::vector<ItemDifference> items; ///< in what the readers make of the device files

    /// Nothing that counts differs.
    bool isEqual() const;
    /// Sending the first side to the second would change nothing that counts there: it takes nothing away.
    bool sendingChangesNothing() const;
    /// All that the first side has is on the second one, byte for byte.
    bool holdsEveryByte() const;

    /// The items that differ in that device file.
    std::vector<Item> itemsIn(const HeldAnswer& file) const;
    /// Device files that count and differ while no item of theirs says how, or that one side does not have.
    std::vector<HeldAnswer> unexplainedFiles() const;
};

/// \throws std::system_error for a bitmap that cannot be read
ContentsComparison compareContents(const DisplayContents& before, const DisplayContents& after);

} // namespace orvista
