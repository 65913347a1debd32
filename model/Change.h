#pragma once

#include "model/Fields.h"
#include "model/Item.h"
#include "model/Project.h"

#include <cstddef>
#include <span>
#include <string>
#include <vector>

/// The one shape of a change from wherever it comes, a table, the clipboard, another project or a page, to
/// the step that takes it back.
namespace orvista {

/// One text of one item before and after, in device bytes.
struct Change {
    Item item;
    const Field* field = nullptr; ///< of the item's kind
    std::string before;
    std::string after;
    std::size_t at = 0; ///< the byte from which on the two stand in the text, where they are a part of it
    bool operator==(const Change&) const = default;
};

/// Adds what makes an item hold these texts; nothing for those that it holds already.
/// \param texts one for each of the item's fields
void addChanges(std::vector<Change>& changes, const Project& project, Item item,
                std::span<const std::string> texts);
/// What makes an item of the one project hold what it holds in the other.
std::vector<Change> changesBetween(const Project& before, const Project& after, Item item);

/// Lets the item hold these texts.
/// \returns what that changed
std::vector<Change> storeTexts(Project& project, Item item, std::span<const std::string> texts);

/// The items that change, each once, in the order of the changes.
std::vector<Item> itemsOf(std::span<const Change> changes);

/// The same change as the part of the texts that differs, which is small in a long script.
Change trimmed(const Change& change);
/// What the change takes of memory, about.
std::size_t bytesOf(const Change& change);

/// The items must hold what they held before the changes, which are of different texts.
void applyChanges(Project& project, std::span<const Change> changes);
/// The items must hold what they held after the changes.
void revertChanges(Project& project, std::span<const Change> changes);

} // namespace orvista
