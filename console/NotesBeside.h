#pragma once

#include "items/NotesJson.h"

#include <optional>
#include <string>
#include <vector>

/// The notes that lie beside a project which a command is given.
namespace CLI {
class App;
}

namespace orvista::console {

/// Tells of the entries that were left out.
void tellBadEntries(const std::string& path, const NotesReading& reading);

/// What is wrong with the file is told; a command goes on with what was taken.
/// \param project path of the project file
ProjectNotes notesBeside(const std::string& project);
/// The same with what else is known of the file.
NotesReading notesReadBeside(const std::string& project);

/// Dots across the display: as the option says, else the notes, else PanelSize::usualColumns.
int panelColumns(const std::optional<int>& option, const ProjectNotes& notes);
/// The option.
void addPanelColumns(CLI::App& command, std::optional<int>& columns);

/// The words with each label replaced by its item's name; "Regular3" is a name, too. Other words stay.
std::vector<std::string> withoutLabels(std::vector<std::string> words, const ProjectNotes& notes);
/// The same for words before "=": "TankLevel=1.5".
std::vector<std::string> withoutAssignedLabels(std::vector<std::string> assignments,
                                               const ProjectNotes& notes);

/// As changeNotes() does. \throws CommandFailure
void changeNotesBeside(const std::string& project, const ProjectNotes& before, const ProjectNotes& after);
/// As copyNotes() does. \throws CommandFailure
void copyNotesBeside(const std::string& fromProject, const std::string& toProject);

} // namespace orvista::console
