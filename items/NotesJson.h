#pragma once

#include "items/ProjectNotes.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// Notes as JSON, UTF-8:
///
///     {"version": 1,
///      "display": {"name": "Line 3, gate", "columns": 96},
///      "master": {"list": "displays.csv"},
///      "items": {"RegVar12": {"label": "TankLevel", "unit": "m", "comment": "Level of tank 1"}}}
///
/// All but the version may be missing. Keys of others may stand anywhere, and stay there.
namespace orvista {

/// Longer files are neither read nor written, nor copied.
inline constexpr std::size_t mostNotesBytes = std::size_t{1} << 20;
/// Why they are not.
std::string notesSizeFault();
/// How many bad entries are listed; the rest are counted.
inline constexpr std::size_t mostBadEntries = 100;

struct NotesReading {
    ProjectNotes notes;
    std::string fault; ///< why nothing was taken: "line 3, column 8 is no JSON"; empty where it was
    std::vector<std::string> bad; ///< entries that were left out, each with the reason
    std::size_t badNotListed = 0;
    /// What was not taken may say that the project is a master.
    bool mayHideMaster = false;
};

NotesReading readNotes(std::string_view bytes);

/// What a file holds that is to hold these notes. Entries that say the same, bad entries and keys of others
/// stay as they are, in their order; bytes that say it all already stay as they are. \param former the file's
/// bytes now; empty where there is none \throws std::invalid_argument with the fault for bytes that are not
/// taken, and where the result would not be
std::string notesBytes(std::string_view former, const ProjectNotes& notes);

} // namespace orvista
