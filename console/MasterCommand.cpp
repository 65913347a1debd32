#include "console/Commands.h"

#include "console/GivenProject.h"
#include "console/NotesBeside.h"
#include "console/Projects.h"
#include "model/Quotation.h"
#include "sheets/MasterList.h"

#include <CLI/App.hpp>

#include <memory>

namespace orvista::console {

namespace {

struct MasterOptions {
    std::string project;
    std::string list;
    bool off = false;
};

ExitStatus makeMaster(const MasterOptions& options) {
    if (options.off != options.list.empty())
        throw CommandFailure(ExitStatus::Unusable, "master takes either --list or --off");
    GivenProject given(options.project, readProject(options.project));
    ProjectNotes notes = given.notes();
    notes.masterList.reset();
    if (!options.off) {
        notes.masterList = notedListPath(options.project, options.list);
        if (const std::string fault = listPathFault(*notes.masterList); !fault.empty())
            throw CommandFailure(ExitStatus::Unusable, quotation(*notes.masterList) + " " + fault);
        displaysOfList(options.list, options.project); // it can be used
    }
    changeNotesBeside(options.project, given.notes(), notes);
    return ExitStatus::Well;
}

} // namespace

void addMaster(CLI::App& program, Run& run) {
    const auto options = std::make_shared<MasterOptions>();
    CLI::App* command =
        program.add_subcommand("master", "Make a project the master of the displays of a list");
    command->add_option("PROJECT", options->project, "A project file, .orx")->required();
    command
        ->add_option("--list", options->list,
                     "The table of its displays; columns beyond name, address, port, project and columns "
                     "are values")
        ->type_name("FILE.csv");
    command->add_flag("--off", options->off, "Make it an ordinary project again");
    command->footer(
        "Examples:\n"
        "  orvista master PLANT.orx --list displays.csv\n"
        "  orvista check PLANT.orx --display all\n"
        "  orvista upload PLANT.orx --display all\n\n"
        "In a master {tank:8} within the quotes of a TEXT is eight characters for the value in the\n"
        "column \"tank\"; {tank:8>} stands right, {tank:8^} in the middle. {logo}.bmp is a bitmap's name,\n"
        "{state} an ON or OFF text. {{ is a brace. Only the notes beside the project change.");
    command->callback([options, &run] { run = [options] { return makeMaster(*options); }; });
}

} // namespace orvista::console
