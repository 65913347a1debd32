#include "console/NotesBeside.h"

#include "console/CommandFailure.h"
#include "console/OptionChecks.h"
#include "console/Output.h"
#include "display/LedRaster.h"
#include "items/NotesFile.h"
#include "model/Numbers.h"

#include <CLI/App.hpp>

#include <utility>

namespace orvista::console {

namespace {

std::string withoutLabel(const std::string& word, const ProjectNotes& notes) {
    const auto item = itemCalled(word, notes);
    return item && item->kind != Kind::AddressMap ? nameOf(*item) : word;
}

} // namespace

void tellBadEntries(const std::string& path, const NotesReading& reading) {
    for (const std::string& bad : reading.bad)
        complain(path + ": " + bad);
    if (reading.badNotListed > 0)
        complain(path + ": and " + decimalText(reading.badNotListed) + " more");
}

ProjectNotes notesBeside(const std::string& project) {
    return notesReadBeside(project).notes;
}

NotesReading notesReadBeside(const std::string& project) {
    const std::string path = notesPath(project);
    NotesReading reading = readNotesFile(path);
    if (!reading.fault.empty())
        complain(notesFaultText(path, reading));
    tellBadEntries(path, reading);
    return reading;
}

int panelColumns(const std::optional<int>& option, const ProjectNotes& notes) {
    return option.value_or(notes.columns.value_or(PanelSize::usualColumns));
}

void addPanelColumns(CLI::App& command, std::optional<int>& columns) {
    command
        .add_option("--columns", columns,
                    "Dots across the panel, 1 to 4096; else those in the notes, else 128")
        ->type_name("N")
        ->check(wholeNumbers(1, PanelSize::maximumColumns));
}

std::vector<std::string> withoutLabels(std::vector<std::string> words, const ProjectNotes& notes) {
    for (std::string& word : words)
        word = withoutLabel(word, notes);
    return words;
}

std::vector<std::string> withoutAssignedLabels(std::vector<std::string> assignments,
                                               const ProjectNotes& notes) {
    for (std::string& assignment : assignments)
        if (const std::size_t sign = assignment.find('='); sign != std::string::npos)
            assignment = withoutLabel(assignment.substr(0, sign), notes) + assignment.substr(sign);
    return assignments;
}

void changeNotesBeside(const std::string& project, const ProjectNotes& before, const ProjectNotes& after) {
    try {
        changeNotes(notesPath(project), before, after);
    } catch (const NotesFailure& failure) {
        throw CommandFailure(ExitStatus::Found, failure.what());
    }
}

void copyNotesBeside(const std::string& fromProject, const std::string& toProject) {
    try {
        copyNotes(fromProject, toProject);
    } catch (const NotesFailure& failure) {
        throw CommandFailure(ExitStatus::Found, failure.what());
    }
}

} // namespace orvista::console
