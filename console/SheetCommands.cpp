#include "console/Commands.h"

#include "console/Output.h"
#include "console/Projects.h"
#include "console/SaveTarget.h"
#include "console/Sheets.h"
#include "model/Change.h"
#include "model/Lines.h"
#include "model/Numbers.h"
#include "model/ProjectFile.h"
#include "model/Quotation.h"
#include "model/Text.h"
#include "sheets/MessageSheet.h"
#include "sheets/VariableSheet.h"

#include <CLI/App.hpp>

#include <memory>

/// Messages and variables to a table and back.
namespace orvista::console {

namespace {

struct ExportOptions {
    std::string project;
    std::string output;
    bool pages = false;
    bool notWhole = false;
};

struct ImportOptions {
    std::string project;
    std::string sheet;
    std::string output;
    bool dryRun = false;
    bool exitChanged = false;
    bool notWhole = false;
};

using Import = SheetImport (*)(std::string_view, const Project&);

constexpr const char* spreadsheetHint = "\n\nA spreadsheet takes the zeros in front of 00323 away and makes "
                                        "a date of 1/2 as soon as it opens a table;\n"
                                        "import the columns as text. A text that begins with = + - or @ has "
                                        "an apostrophe in front in the table,\n"
                                        "which import takes off again.";

void deliver(const std::string& output, const std::string& csv) {
    expectedTable(output);
    if (const std::string fault = sheetSizeFault(csv); !fault.empty())
        throw CommandFailure(ExitStatus::Found, fault);
    if (output.empty())
        print(csv, Reader::Program);
    else
        writeFile(output, csv);
}

ExitStatus exportMessages(const ExportOptions& options) {
    expectApartFromProject(options.output, options.project);
    const Project project = readWholeProject(options.project, options.notWhole);
    const MessageSheet sheet =
        messageSheet(project, options.pages ? MessageSheetForm::Pages : MessageSheetForm::Scripts);
    deliver(options.output, sheet.csv);
    for (const Item message : sheet.mendedLineEnds)
        complain(nameOf(message) + ": lone CR or LF was written as CR LF");
    return ExitStatus::Well;
}

ExitStatus exportVariables(const ExportOptions& options) {
    expectApartFromProject(options.output, options.project);
    deliver(options.output, variableSheet(readWholeProject(options.project, options.notWhole)));
    return ExitStatus::Well;
}

/// Each line of the text with a mark in front.
std::string marked(char mark, std::string_view text) {
    std::string lines;
    do {
        const auto end = std::min(text.find(lineEnd), text.size());
        lines.append(1, mark).append(" ").append(printable(text.substr(0, end))).append("\n");
        text.remove_prefix(std::min(end + lineEnd.size(), text.size()));
    } while (!text.empty());
    return lines;
}

void printChanges(const std::vector<Change>& changes) {
    for (const Change& change : changes)
        print(nameOf(change.item) + " " + std::string(change.field->name) + "\n" +
              marked('-', change.before) + marked('+', change.after));
}

std::string countText(std::size_t count, std::string_view done) {
    return (count == 0 ? "Nothing" : countedText(count, "text")).append(done);
}

/// Both are files, so that either order looks right.
void expectProjectFirst(const ImportOptions& options) {
    const auto isProject = [](const std::string& path) {
        return endsWithIgnoringCase(path, DocMgrModule::projectExtension);
    };
    if (isProject(options.sheet) && !isProject(options.project))
        throw CommandFailure(ExitStatus::Unusable, options.sheet + " is a project, which comes first; " +
                                                       options.project + " is the table");
}

/// Empty where there are none.
std::string emptyCellsText(std::size_t count) {
    if (count == 0)
        return {};
    return decimalText(count) + " of them for an empty cell: the default of a number, an empty text\n";
}

ExitStatus importSheet(const ImportOptions& options, Import import) {
    expectProjectFirst(options);
    ReadFiles table;
    table.add(options.sheet);
    const SaveTarget target(options.project, options.output, std::move(table));
    Project project = readWholeProject(options.project, options.notWhole);
    const SheetImport result = import(sheetBytes(options.sheet), project);
    if (!result.errors.none()) {
        reportErrors(options.sheet, result.errors);
        return ExitStatus::Found;
    }
    reportErrors(options.sheet, result.notes);
    const bool hasChanges = !result.changes.empty();
    if (options.dryRun) {
        printChanges(result.changes);
    } else if (hasChanges || target.isAnother()) {
        applyChanges(project, result.changes);
        target.save(project);
    }
    print(countText(result.changes.size(), options.dryRun ? " would change\n" : " changed\n") +
          emptyCellsText(result.fromEmptyCells));
    return options.exitChanged && hasChanges ? ExitStatus::Found : ExitStatus::Well;
}

void addExport(CLI::App& group, Run& run, const std::shared_ptr<ExportOptions>& options,
               ExitStatus (*work)(const ExportOptions&), const std::string& footer) {
    CLI::App* command = group.add_subcommand("export", "Write the table");
    command->add_option("PROJECT", options->project, "A project file, .orx")->required();
    command->add_option("-o,--output", options->output, "The file to write; without it, standard output")
        ->type_name("FILE.csv");
    addNotWhole(*command, options->notWhole);
    command->footer(footer + spreadsheetHint);
    command->callback([options, work, &run] { run = [options, work] { return work(*options); }; });
    if (work == exportMessages)
        command->add_flag("--pages", options->pages, "A row for each page, as the message wizard has it");
}

void addImport(CLI::App& group, Run& run, Import import, const std::string& footer) {
    const auto options = std::make_shared<ImportOptions>();
    CLI::App* command =
        group.add_subcommand("import", "Take what the table says into the project and save it");
    command->add_option("PROJECT", options->project, "A project file, .orx")->required();
    command->add_option("FILE.csv", options->sheet, "The table; \"-\" is standard input")->required();
    command->add_option("-o,--output", options->output, "Save as this project instead; .orx may be left out")
        ->type_name("OTHER.orx");
    command->add_flag("--dry-run", options->dryRun, "Show old and new, and change nothing");
    command->add_flag("--exit-changed", options->exitChanged,
                      "End with status 1 where the table says something else than the project");
    addNotWhole(*command, options->notWhole);
    command->footer(footer + spreadsheetHint);
    command->callback(
        [options, import, &run] { run = [options, import] { return importSheet(*options, import); }; });
}

} // namespace

void addMessages(CLI::App& program, Run& run) {
    CLI::App* group = program.add_subcommand("messages", "Messages to a table and back");
    group->require_subcommand(1);
    addExport(*group, run, std::make_shared<ExportOptions>(), exportMessages,
              "Examples:\n"
              "  orvista messages export PUMPSTATION.orx -o messages.csv\n"
              "  orvista messages export PUMPSTATION.orx --pages -o pages.csv");
    addImport(*group, run, importMessages,
              "Examples:\n"
              "  orvista messages import PUMPSTATION.orx pages.csv --dry-run\n"
              "  orvista messages import PUMPSTATION.orx pages.csv\n"
              "  orvista messages import PUMPSTATION.orx messages.csv -o COPY.orx");
    group->footer("Examples:\n"
                  "  orvista messages export PUMPSTATION.orx --pages -o pages.csv\n"
                  "  orvista messages import PUMPSTATION.orx pages.csv --dry-run");
}

void addVariables(CLI::App& program, Run& run) {
    CLI::App* group = program.add_subcommand("variables", "Variables to a table and back");
    group->require_subcommand(1);
    addExport(*group, run, std::make_shared<ExportOptions>(), exportVariables,
              "Examples:\n"
              "  orvista variables export PUMPSTATION.orx -o variables.csv");
    addImport(*group, run, importVariables,
              "Examples:\n"
              "  orvista variables import PUMPSTATION.orx variables.csv --dry-run\n"
              "  orvista variables import PUMPSTATION.orx variables.csv\n\n"
              "An empty cell stands for the default of a number, and for an empty on or off text; a column "
              "that is\n"
              "not in the table changes nothing.");
    group->footer("Examples:\n"
                  "  orvista variables export PUMPSTATION.orx -o variables.csv\n"
                  "  orvista variables import PUMPSTATION.orx variables.csv");
}

} // namespace orvista::console
