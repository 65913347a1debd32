#include "console/Commands.h"

#include "console/GivenProject.h"
#include "console/ListHead.h"
#include "console/NotesBeside.h"
#include "console/Output.h"
#include "console/Projects.h"
#include "console/ReadFiles.h"
#include "items/AcceptanceFile.h"
#include "model/Text.h"
#include "sheets/BookHtml.h"
#include "sheets/MessageBook.h"

#include <CLI/App.hpp>

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace orvista::console {

namespace {

struct BookOptions {
    std::string project;
    std::vector<std::string> displays; ///< of a master
    std::string output;
    std::string accepted;
    std::optional<int> columns;
    bool usedOnly = false;
    bool widest = false;
    bool notWhole = false;
};

/// Nothing without a file. \throws CommandFailure
std::optional<Acceptance> acceptanceIn(const std::string& file) {
    if (file.empty())
        return std::nullopt;
    AcceptanceReading reading = readAcceptanceFile(file);
    if (!reading.acceptance)
        throw CommandFailure(ExitStatus::Unusable, file + " is not taken: " + reading.fault);
    return std::move(reading.acceptance);
}

ExitStatus writeBookOf(const ProjectView& view, const BookOptions& options) {
    const std::string output = fileOfDisplay(options.output, options.displays, view);
    ReadFiles files;
    files.addProject(options.project);
    files.add(options.accepted);
    files.expectApart(output);
    expectFilled(view);
    auto acceptance = acceptanceIn(options.accepted);
    const BookWishes wishes{.columns = panelColumns(options.columns, view.notes),
                            .addresses = options.usedOnly ? AddressRows::UsedOnly : AddressRows::All,
                            .widest = options.widest};
    MessageBook book = messageBook(view.project, view.notes, ViewBitmaps(view).provider(), wishes);
    book.acceptance = std::move(acceptance);
    const AddressHead head = listHead(view.project, view.notes, wishes.moment);
    writeFile(output, bookHtml(book, view.project, head));
    if (!book.acceptance || !isOfAnotherProject(*book.acceptance, head))
        return ExitStatus::Well;
    complain(options.accepted + " is of another project: the display held " + book.acceptance->fingerprint);
    return ExitStatus::Found;
}

ExitStatus writeBook(const BookOptions& options) {
    if (!endsWithIgnoringCase(options.output, ".html") && !endsWithIgnoringCase(options.output, ".htm"))
        throw CommandFailure(ExitStatus::Unusable, options.output + " does not end in .html");
    GivenProject given(options.project, readWholeProject(options.project, options.notWhole));
    return given.eachView(options.displays,
                          [&](const ProjectView& view) { return writeBookOf(view, options); });
}

} // namespace

void addBook(CLI::App& program, Run& run) {
    const auto options = std::make_shared<BookOptions>();
    CLI::App* command =
        program.add_subcommand("book", "Write a book of all messages, with pictures, to print and sign");
    command->add_option("PROJECT", options->project, "A project file, .orx")->required();
    command->add_option("-o,--output", options->output, "The page to write; its pictures are in it")
        ->type_name("FILE.html")
        ->required();
    addDisplayNames(*command, options->displays);
    addPanelColumns(*command, options->columns);
    command->add_flag("--used", options->usedOnly,
                      "Addresses only of variables that a message shows, and messages that draw");
    command->add_flag("--widest", options->widest,
                      "Show each page that has fields with its widest values, too");
    command
        ->add_option("--accepted", options->accepted,
                     "What was seen at a display, as Accept at the Display saves it")
        ->type_name("FILE.json");
    addNotWhole(*command, options->notWhole);
    command->footer("Examples:\n"
                    "  orvista book PUMPSTATION.orx -o book.html\n"
                    "  orvista book PUMPSTATION.orx --widest --used -o book.html\n"
                    "  orvista book PUMPSTATION.orx --accepted PUMPSTATION-accepted.json -o book.html\n\n"
                    "Each message that draws something comes with a picture of every page as orvista show\n"
                    "draws it, its time, effects, texts, variables and findings; the address list follows.\n"
                    "Of a message with more than 100 pages the rest is counted.");
    command->callback([options, &run] { run = [options] { return writeBook(*options); }; });
}

} // namespace orvista::console
