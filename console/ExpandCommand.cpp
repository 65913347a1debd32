#include "console/Commands.h"

#include "console/Displays.h"
#include "console/GivenProject.h"
#include "console/Interruption.h"
#include "console/NewFolder.h"
#include "console/Output.h"
#include "console/ProjectDelivery.h"
#include "console/Projects.h"
#include "items/NotesFile.h"
#include "link/ProjectSnapshot.h"
#include "model/Numbers.h"
#include "model/ProjectFile.h"
#include "model/SystemPath.h"

#include <CLI/App.hpp>

#include <filesystem>
#include <memory>
#include <system_error>

namespace orvista::console {

namespace {

struct ExpandOptions {
    std::string project;
    std::string list;
    std::string output;
    bool dryRun = false;
    bool notWhole = false;
};

/// Writes the projects of displays into folders of their own.
class Expanding {
public:
    Expanding(const GivenProject& given, const ExpandOptions& options) : given_(given), options_(options) {}

    /// All of a display's files, or none. \throws CommandFailure, std::system_error, NotesFailure
    void write(const FleetDisplay& display) {
        const PathRules paths = PathRules::native();
        const std::string target =
            DocMgrModule::projectFilePath(paths, paths.join(options_.output, display.name), display.name);
        ProjectView view = given_.of(display);
        expectFilled(view);
        expectNoOtherProject(options_.project, target);
        if (!options_.dryRun)
            deliver(view, target);
        printLine(target);
    }

private:
    void deliver(ProjectView& view, const std::string& target) {
        const std::string folder = PathRules::native().join(scratch_.path(), decimalText(number_++));
        std::filesystem::create_directory(systemPath(folder));
        view.project.ProjName = view.display->name;
        const std::string written = writeSnapshot(view.project, folder);
        writeChangedNotes(notesPath(options_.project), notesPath(written), view.notes);
        deliverProject(written, target, DeliveryFolder::AnyOne);
        std::error_code unknown;
        std::filesystem::remove_all(systemPath(folder), unknown);
    }

    const GivenProject& given_;
    const ExpandOptions& options_;
    ScratchFolder scratch_ = scratchFolder();
    std::size_t number_ = 0;
};

ExitStatus expandMaster(const ExpandOptions& options) {
    if (options.output.empty())
        throw CommandFailure(ExitStatus::Unusable, "the output folder is empty");
    const Interruption interruption(WatchInput::No);
    GivenProject given(options.project, readWholeProject(options.project, options.notWhole));
    if (!options.list.empty())
        given.readList(options.list);
    Expanding expanding(given, options);
    ExitStatus status = ExitStatus::Well;
    for (const FleetDisplay& display : given.displays()) {
        if (interruption.came())
            throw CommandFailure(ExitStatus::Found, "interrupted");
        try {
            expanding.write(display);
        } catch (const std::exception& failure) { // of this display alone
            complain(failure.what());
            status = ExitStatus::Found;
        }
    }
    return status;
}

} // namespace

void addExpand(CLI::App& program, Run& run) {
    const auto options = std::make_shared<ExpandOptions>();
    CLI::App* command = program.add_subcommand("expand", "Write the project of each display of a master");
    command->add_option("MASTER", options->project, "A project file, .orx, that is a master")->required();
    command->add_option("--list", options->list, "Another table of displays than the master's own")
        ->type_name("FILE.csv");
    command->add_option("-o,--output", options->output, "The folder for one folder of each display")
        ->type_name("FOLDER")
        ->required();
    command->add_flag("--dry-run", options->dryRun, "Write nothing; tell what would be written");
    addNotWhole(*command, options->notWhole);
    command->footer(
        "Examples:\n"
        "  orvista expand PLANT.orx -o lines\n"
        "  orvista expand PLANT.orx --list test.csv -o lines --dry-run\n\n"
        "Writes FOLDER/NAME/NAME.orx for each display, with the display's files, the bitmaps and the\n"
        "notes: all of a display or none. A value that does not fit its place costs only its own\n"
        "display. Ends with status 1 when a display was not written, 2 when nothing was begun.");
    command->callback([options, &run] { run = [options] { return expandMaster(*options); }; });
}

} // namespace orvista::console
