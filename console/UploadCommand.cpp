#include "console/Commands.h"
#include "model/SystemPath.h"

#include "check/ProjectCheck.h"
#include "console/Displays.h"
#include "console/FindingText.h"
#include "console/FleetOptions.h"
#include "console/FleetRun.h"
#include "console/Output.h"
#include "console/Projects.h"
#include "console/Worker.h"
#include "display/FolderBitmaps.h"
#include "link/DisplayAddress.h"
#include "link/ProjectSnapshot.h"
#include "model/Numbers.h"
#include "model/ProjectFile.h"
#include "model/Text.h"
#include "sheets/FleetSheet.h"

#include <CLI/App.hpp>

#include <filesystem>
#include <map>
#include <memory>

namespace orvista::console {

namespace {

struct UploadOptions {
    FleetOptions fleet;
    std::string project;
    std::string report;
    bool check = false;
    bool skipEqual = false;
    bool verify = false;
    bool notWhole = false;
};

/// Tells of every error. \returns whether there is one
bool hasErrors(const std::string& path, const Project& project) {
    const Findings findings = checkProject(project, FolderBitmaps(project.ProjPath), PanelSize::usualColumns);
    for (const Finding& finding : findings.list) {
        if (finding.severity() == Severity::Error)
            complain(findingText(path, finding));
    }
    return findings.counts.errors > 0;
}

/// The projects that are sent, each as it was when the command began. \see writeSnapshot
class Snapshots {
public:
    /// \throws CommandFailure, after every project that cannot be sent was told of
    Snapshots(const std::vector<FleetDisplay>& displays, const std::string& scratch,
              const UploadOptions& options)
        : options_(options) {
        for (const FleetDisplay& display : displays) {
            if (paths_.emplace(display.project, std::string()).second)
                take(display.project, scratch);
        }
        if (status_ != ExitStatus::Well)
            throw CommandFailure(status_, "nothing was sent");
    }

    const std::string& of(const FleetDisplay& display) const { return paths_.at(display.project); }
    /// Why the display's project is not sent; empty for one that is.
    std::string refusal(const FleetDisplay& display) const {
        const auto refused = refused_.find(display.project);
        return refused == refused_.end() ? std::string() : refused->second;
    }

private:
    void take(const std::string& path, const std::string& scratch) {
        try {
            const Project project = readWholeProject(path, options_.notWhole);
            if (options_.check && hasErrors(path, project))
                status_ = std::max(status_, ExitStatus::Found);
            const std::string folder = PathRules::native().join(scratch, decimalText(paths_.size()));
            std::filesystem::create_directory(systemPath(folder));
            paths_[path] = writeSnapshot(project, folder);
        } catch (const NotWholeFailure& failure) {
            refused_.emplace(path, failure.what());
            if (options_.fleet.list.empty()) {
                complain(failure.what());
                status_ = ExitStatus::Unusable;
            }
        } catch (const CommandFailure& failure) {
            complain(failure.what());
            status_ = ExitStatus::Unusable;
        } catch (const std::system_error& failure) {
            const std::string fault = writingFault(scratch);
            complain(fault.empty() ? path + ": " + failure.code().message() : fault);
            status_ = ExitStatus::Unusable;
        }
    }

    const UploadOptions& options_;
    std::map<std::string, std::string> paths_;
    std::map<std::string, std::string> refused_; ///< of a list, whose other projects are sent
    ExitStatus status_ = ExitStatus::Well;
};

FleetTask uploadTask(const FleetDisplay& display, const Snapshots& snapshots, const UploadOptions& options) {
    FleetTask task{display.name,
                   displayArgument(display.address),
                   {std::string(uploadWorker), displayArgument(display.address), snapshots.of(display)}};
    task.refusal = snapshots.refusal(display);
    if (options.skipEqual)
        task.arguments.emplace_back("--skip-equal");
    if (options.verify)
        task.arguments.emplace_back("--verify");
    return task;
}

ExitStatus uploadToMany(const UploadOptions& options) {
    const auto displays = chosenDisplays(options.fleet, {.project = options.project});
    if (!options.project.empty())
        expectProject(options.project);
    else if (options.fleet.list.empty())
        throw CommandFailure(ExitStatus::Unusable, "there is no project to send");
    Interruption interruption(watchInput(options.fleet)); // or Ctrl+C would leave the folder
    const ScratchFolder scratch = scratchFolder();
    const Snapshots snapshots(displays, scratch.path(), options);
    std::vector<FleetTask> tasks;
    tasks.reserve(displays.size());
    for (const FleetDisplay& display : displays)
        tasks.push_back(uploadTask(display, snapshots, options));
    FleetOutput output(tasks.size(), options.fleet.json);
    FleetRun fleet(std::move(tasks), options.fleet.jobs, scratch.path(), output);
    const auto results = fleet.run(interruption);
    const ExitStatus status = output.finish(results);
    if (!options.report.empty())
        writeFile(options.report, fleetReport(results));
    output.expectWritten();
    return status;
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
    if (options.fleet.displays.empty() == options.fleet.list.empty())
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
    addFleetOptions(*command, options->fleet);
    command->add_flag("--check", options->check, "Send nothing where the check finds an error");
    command->add_flag("--skip-equal", options->skipEqual, "Pass over displays that have the project already");
    command->add_flag("--verify", options->verify, "Fetch every file once more and compare it byte for byte");
    addNotWhole(*command, options->notWhole);
    command->add_option("--report", options->report, "Write the results as a table, too")
        ->type_name("FILE.csv");
    command->footer(
        "Examples:\n"
        "  orvista upload PUMPSTATION.orx --to 192.168.1.103\n"
        "  orvista upload PUMPSTATION.orx --to 192.168.1.103 192.168.1.104:7001 --verify\n"
        "  orvista upload --list displays.csv --check --skip-equal --report results.csv\n\n"
        "The list's port and project may be empty; the project is relative to the list's folder. PROJECT is\n"
        "sent to the displays without one. Results: done, equal, failed, half (some files\n"
        "arrived), refused (the project is not whole).\n"
        "Ends with status 1 when a display failed, 2 when nothing was begun.");
    command->callback([options, &run] { run = [options] { return upload(*options); }; });
}

} // namespace orvista::console
