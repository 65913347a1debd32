#include "console/Commands.h"

#include "console/FleetCommand.h"
#include "console/GivenProject.h"
#include "console/MasterRows.h"
#include "console/ProjectSnapshots.h"
#include "console/Projects.h"
#include "link/DisplayAddress.h"
#include "model/Numbers.h"
#include "model/ProjectFile.h"
#include "model/Text.h"

#include <CLI/App.hpp>

#include <algorithm>
#include <memory>

namespace orvista::console {

namespace {

struct UploadOptions {
    FleetOptions fleet;
    std::string project;
    std::vector<std::string> names; ///< of displays of a master
    bool check = false;
    bool skipEqual = false;
    bool verify = false;
    bool notWhole = false;
    bool allOrNone = false;

    /// A list whose faulty projects cost only their own displays.
    bool sendsSome() const { return !fleet.list.empty() && !allOrNone; }
};

void prepareUploads(std::vector<FleetTask>& tasks, const std::string& scratch,
                    const Interruption& interruption, const UploadOptions& options) {
    const ProjectSnapshots snapshots(tasks, scratch,
                                     {.check = options.check,
                                      .notWhole = options.notWhole,
                                      .tellEach = !options.sendsSome(),
                                      .fingerprints = !options.fleet.journal.empty()},
                                     interruption);
    snapshots.prepare(tasks, uploadWork);
    for (FleetTask& task : tasks) {
        task.request.skipEqual = options.skipEqual;
        task.request.verify = options.verify;
    }
    if (snapshots.worst() && !options.sendsSome())
        throw CommandFailure(*snapshots.worst(), "nothing was sent");
}

ExitStatus uploadToMany(const UploadOptions& options) {
    if (!options.project.empty())
        expectProject(options.project);
    else if (options.fleet.list.empty())
        throw CommandFailure(ExitStatus::Unusable, "there is no project to send");
    return runOnDisplays(options.fleet, {.project = options.project},
                         [&options](std::vector<FleetTask>& tasks, const std::string& scratch,
                                    const Interruption& interruption) {
                             prepareUploads(tasks, scratch, interruption, options);
                         });
}

/// A project among the displays is the project: "--to" takes whatever follows it.
void takeProjectFromDisplays(UploadOptions& options) {
    auto& displays = options.fleet.displays;
    const auto project = std::ranges::find_if(displays, [](const std::string& text) {
        return endsWithIgnoringCase(text, DocMgrModule::projectExtension);
    });
    if (!options.project.empty() || project == displays.end())
        return;
    options.project = *project;
    displays.erase(project);
}

ExitStatus upload(UploadOptions options) {
    takeProjectFromDisplays(options);
    if (options.fleet.list.empty())
        options.fleet.chosen = masterRows(options.project, options.names, options.fleet.displays);
    else if (!options.names.empty())
        throw CommandFailure(ExitStatus::Unusable,
                             "--display chooses from the master's own list, not --list");
    const bool hasDisplays = !options.fleet.displays.empty() || !options.fleet.chosen.empty();
    if (hasDisplays == !options.fleet.list.empty())
        throw CommandFailure(ExitStatus::Unusable, "upload takes either --to or --list");
    return uploadToMany(options);
}

} // namespace

void addUpload(CLI::App& program, Run& run) {
    const auto options = std::make_shared<UploadOptions>();
    CLI::App* command = program.add_subcommand("upload", "Send projects to displays, many at once");
    command->add_option("PROJECT", options->project, "A project file, .orx");
    command
        ->add_option("--to", options->fleet.displays,
                     "Displays: NAME, NAME:PORT or [IPv6]:PORT; port " + decimalText(fileTransfer.port))
        ->type_name("DISPLAY");
    addDisplayNames(*command, options->names);
    addFleetOptions(*command, options->fleet);
    command->add_flag("--check", options->check, "Send nothing where the check finds an error");
    command->add_flag("--skip-equal", options->skipEqual, "Pass over displays that have the project already");
    command->add_flag("--verify", options->verify, "Fetch every file once more and compare it byte for byte");
    addNotWhole(*command, options->notWhole);
    command->add_flag("--all-or-none", options->allOrNone,
                      "With --list, send nothing where one project cannot be sent");
    addReport(*command, options->fleet);
    command->footer(
        "Examples:\n"
        "  orvista upload PUMPSTATION.orx --to 192.168.1.103\n"
        "  orvista upload PUMPSTATION.orx --to 192.168.1.103 192.168.1.104:7001 --verify\n"
        "  orvista upload --list displays.csv --check --skip-equal --report results.csv\n"
        "  orvista upload PLANT.orx --display \"Line 17,Line 18\" --check\n\n"
        "The list's port and project may be empty; the project is relative to the list's folder. PROJECT is\n"
        "sent to the displays without one. Results: done, equal, failed, half (some files\n"
        "arrived), refused (the project cannot be read, is not whole or has errors: the displays of others\n"
        "get theirs all the same).\n"
        "Each display of a master gets its own project: the displays are rows of the master's list, named\n"
        "by --display or found by the address --to, or those of --list.\n"
        "Ends with status 1 when a display failed, 2 when nothing was begun.");
    command->callback([options, &run] { run = [options] { return upload(*options); }; });
}

} // namespace orvista::console
