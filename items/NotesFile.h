#pragma once

#include "items/NotesJson.h"
#include "model/Project.h"

#include <stdexcept>
#include <string>

/// The file that holds a project's notes: PLANT.notes.json beside PLANT.orx. Paths are UTF-8.
namespace orvista {

/// Its name is that of an existing file in another case, where there is one and none in the project's.
/// \param projectPath of the project file
std::string notesPath(const std::string& projectPath);
/// Empty for a project that has no name yet.
std::string notesPath(const Project& project);

/// Of a file that is not there nothing is read, and nothing is wrong with it.
NotesReading readNotesFile(const std::string& path);

/// What is wrong with the file, as a sentence; empty where nothing is.
/// \param name of the file, as the user is to see it
std::string notesFaultText(const std::string& name, const NotesReading& reading);

/// Notes that cannot be written or copied; nothing was changed then. `what()` is a sentence.
class NotesFailure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Brings what differs from `before` to `after` into the file as it stands now, whole or not at all.
/// \returns what the file holds then
/// \throws NotesFailure
ProjectNotes changeNotes(const std::string& path, const ProjectNotes& before, const ProjectNotes& after);

/// Writes the notes of one file, changed as `after` has it, in the place of another: entries of others come
/// along. \throws NotesFailure
void writeChangedNotes(const std::string& from, const std::string& to, const ProjectNotes& after);

/// Puts a copy of one file of notes in the place of another; nothing happens where there is none, or both are
/// the same. \throws NotesFailure
void copyNotesFile(const std::string& from, const std::string& to);
/// Puts a copy of one project's notes beside another project; nothing happens where it has none, or both are
/// the same. \throws NotesFailure
void copyNotes(const std::string& fromProject, const std::string& toProject);

} // namespace orvista
