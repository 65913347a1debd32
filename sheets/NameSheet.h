#pragma once

#include "items/ProjectNotes.h"
#include "sheets/Sheet.h"

#include <string>
#include <string_view>
#include <vector>

/// The notes of the variables and messages as a table: name, label, unit, comment.
namespace orvista {

/// A row for each item. \returns UTF-8 with its mark
std::string nameSheet(const ProjectNotes& notes);

/// A text that a sheet changes.
struct NoteChange {
    Item item;
    const NoteField* field;
    std::string before;
    std::string after;
    bool operator==(const NoteChange&) const = default;
};
/// What differs, in the order of the items.
std::vector<NoteChange> noteChanges(const ProjectNotes& before, const ProjectNotes& after);

struct NameImport {
    ProjectNotes notes; ///< with what the sheet says; as they were where there are errors
    SheetErrors errors;
};
/// Items and columns that the sheet does not name stay as they are.
NameImport importNames(std::string_view bytes, const ProjectNotes& notes);

} // namespace orvista
