#pragma once

#include "model/Item.h"

#include <array>
#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What people note about a project's items and its display. The device knows nothing of it. All texts are
/// UTF-8.
namespace orvista {

/// Of one variable or message; each text may be empty.
struct ItemNote {
    std::string label; ///< as labelFault() allows
    std::string unit;
    std::string comment;
    bool operator==(const ItemNote&) const = default;
};

/// One of an item's texts: how files and tables name it, and how many characters it may have.
struct NoteField {
    std::string_view name;
    std::string ItemNote::*text;
    std::size_t longest;
};
extern const std::array<NoteField, 3> noteFields;

/// Of the display's name, in characters.
inline constexpr std::size_t longestDisplayName = 200;
/// Of the path of a master's list, in characters.
inline constexpr std::size_t longestListPath = 1000;
/// Dots across the display.
inline constexpr int fewestNotedColumns = 32;
inline constexpr int mostNotedColumns = 512;

class ProjectNotes {
public:
    std::string displayName;
    std::optional<int> columns; ///< fewestNotedColumns to mostNotedColumns
    /// Of a master project the list of its displays, a path relative to the project; nothing for every other
    /// project. \see items/Master.h
    std::optional<std::string> masterList;

    bool operator==(const ProjectNotes&) const = default;

    /// Of an item without notes all texts are empty.
    const ItemNote& of(Item item) const;
    /// \param item a variable or message
    void set(Item item, const NoteField& field, std::string text);
    void set(Item item, ItemNote note);
    /// Only items that have notes.
    const std::map<Item, ItemNote>& items() const { return items_; }
    /// The item with that label, in any case.
    std::optional<Item> labelled(std::string_view label) const;

private:
    std::map<Item, ItemNote> items_;
};

/// For who shows notes before there are any.
const ProjectNotes& noNotes();

/// The item that a text names: by its name as files or trees write it, else by its label.
std::optional<Item> itemCalled(std::string_view text, const ProjectNotes& notes);

/// How many characters a text has.
std::size_t characterCount(std::string_view utf8);
/// Why a text is not one line of at most `longest` characters, to follow its quotation; empty where it is.
std::string lineFault(std::string_view text, std::size_t longest);
/// Why a text cannot be noted, to follow its quotation; empty where it can. A label is judged by itself.
std::string noteFault(const NoteField& field, std::string_view text);
/// The same of the display's name, and of the path of a master's list.
std::string displayNameFault(std::string_view name);
std::string listPathFault(std::string_view path);

/// Why a label that one item has cannot be another's, too, to follow its quotation.
std::string takenLabelFault(Item owner);

/// What is wrong with an item's text, as a sentence.
struct NoteFault {
    Item item;
    const NoteField* field;
    std::string text;
    bool operator==(const NoteFault&) const = default;
};
/// In the order of the items. Of items with the same label, each but the first has a fault.
std::vector<NoteFault> noteFaults(const ProjectNotes& notes);

/// The notes with what differs from `before` to `after`; everything else is as in `notes`.
ProjectNotes withDifferences(ProjectNotes notes, const ProjectNotes& before, const ProjectNotes& after);

} // namespace orvista
