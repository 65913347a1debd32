#include "console/Commands.h"

#include "console/NotesBeside.h"
#include "console/Output.h"
#include "console/Projects.h"
#include "console/ReadFiles.h"
#include "console/Sheets.h"
#include "items/NotesFile.h"
#include "model/Numbers.h"
#include "sheets/NameSheet.h"

#include <CLI/App.hpp>

#include <memory>

/// The notes of variables and messages to a table and back.
namespace orvista::console {

namespace {

struct NamesOptions {
    std::string project;
    std::string sheet;
    bool dryRun = false;
    bool exitChanged = false;
};

/// Of a project that can be read. \throws CommandFailure where nothing is taken of its notes
ProjectNotes takenNotes(const NamesOptions& options) {
    readProject(options.project);
    const std::string path = notesPath(options.project);
    NotesReading reading = readNotesFile(path);
    if (!reading.fault.empty())
        throw CommandFailure(ExitStatus::Unusable, notesFaultText(path, reading));
    tellBadEntries(path, reading);
    return std::move(reading.notes);
}

ExitStatus exportNames(const NamesOptions& options) {
    expectApartFromProject(options.sheet, options.project);
    const std::string csv = nameSheet(takenNotes(options));
    if (options.sheet.empty())
        print(csv, Reader::Program);
    else
        writeFile(expectedTable(options.sheet), csv);
    return ExitStatus::Well;
}

void printNoteChanges(const std::vector<NoteChange>& changes) {
    for (const NoteChange& change : changes)
        print(nameOf(change.item) + " " + std::string(change.field->name) + "\n- " + change.before + "\n+ " +
              change.after + "\n");
}

ExitStatus importNamesOf(const NamesOptions& options) {
    const ProjectNotes before = takenNotes(options);
    const NameImport import = importNames(sheetBytes(expectedTable(options.sheet)), before);
    if (!import.errors.none()) {
        reportErrors(options.sheet, import.errors);
        return ExitStatus::Found;
    }
    const std::vector<NoteChange> changes = noteChanges(before, import.notes);
    if (options.dryRun)
        printNoteChanges(changes);
    else
        changeNotesBeside(options.project, before, import.notes);
    print((changes.empty() ? "Nothing" : countedText(changes.size(), "text")) +
          (options.dryRun ? " would change\n" : " changed\n"));
    return options.exitChanged && !changes.empty() ? ExitStatus::Found : ExitStatus::Well;
}

CLI::App* addNamesCommand(CLI::App& group, Run& run, const std::shared_ptr<NamesOptions>& options,
                          const char* name, const char* description,
                          ExitStatus (*work)(const NamesOptions&)) {
    CLI::App* command = group.add_subcommand(name, description);
    command->add_option("PROJECT", options->project, "A project file, .orx")->required();
    command->callback([options, work, &run] { run = [options, work] { return work(*options); }; });
    return command;
}

} // namespace

void addNames(CLI::App& program, Run& run) {
    CLI::App* group = program.add_subcommand("names", "Labels, units and comments to a table and back");
    group->require_subcommand(1);
    const auto options = std::make_shared<NamesOptions>();
    CLI::App* const out = addNamesCommand(*group, run, options, "export", "Write the table", exportNames);
    out->add_option("FILE.csv", options->sheet, "The file to write; without it, standard output");
    out->footer("Examples:\n"
                "  orvista names export PUMPSTATION.orx names.csv");
    CLI::App* const in =
        addNamesCommand(*group, run, options, "import",
                        "Take what the table says into the notes beside the project", importNamesOf);
    in->add_option("FILE.csv", options->sheet, "The table; - is standard input")->required();
    in->add_flag("--dry-run", options->dryRun, "Show old and new, and change nothing");
    in->add_flag("--exit-changed", options->exitChanged,
                 "End with status 1 where the table changes something");
    in->footer(
        "Examples:\n"
        "  orvista names import PUMPSTATION.orx names.csv --dry-run\n"
        "  orvista names import PUMPSTATION.orx names.csv\n\n"
        "The columns are name, label, unit and comment; rows and columns that are not in the table change\n"
        "nothing, an empty cell takes a text away. The project itself stays as it is: the notes lie beside\n"
        "it, in PUMPSTATION.notes.json.");
    group->footer("Examples:\n"
                  "  orvista names export PUMPSTATION.orx names.csv\n"
                  "  orvista names import PUMPSTATION.orx names.csv --dry-run");
}

} // namespace orvista::console
