#include "console/Commands.h"
#include "model/SystemPath.h"

#include "console/Displays.h"
#include "console/FleetOptions.h"
#include "console/FleetRun.h"
#include "console/Output.h"
#include "console/Projects.h"
#include "console/Worker.h"
#include "link/DisplayAddress.h"
#include "link/TransferredFiles.h"
#include "link/ftp/DownloadStaging.h"
#include "model/FolderLookup.h"
#include "model/Numbers.h"
#include "model/ProjectFile.h"

#include <filesystem>
#include <memory>

namespace orvista::console {

namespace {

namespace fs = std::filesystem;

struct DownloadOptions {
    FleetOptions fleet;
    std::string output;
};

/// A folder that is made where it is missing, and goes again unless it is kept.
class TargetFolder {
public:
    /// \throws std::system_error
    explicit TargetFolder(const std::string& path) {
        for (fs::path folder = systemPath(path); !folder.empty() && !fs::exists(folder);
             folder = folder.parent_path())
            made_.push_back(folder);
        fs::create_directories(systemPath(path));
    }
    ~TargetFolder() {
        std::error_code notEmpty;
        for (const fs::path& folder : made_)
            fs::remove(folder, notEmpty);
    }
    TargetFolder(const TargetFolder&) = delete;
    TargetFolder& operator=(const TargetFolder&) = delete;

private:
    std::vector<fs::path> made_; ///< innermost first
};

/// Brings a project that was saved beside the bitmaps it came with into its folder: all files or none.
/// \throws std::system_error
void bringOver(const std::string& from, const std::string& to) {
    const PathRules paths = PathRules::native();
    const SplitPath source = paths.split(from).value();
    const SplitPath target = paths.split(to).value_or(SplitPath{".", to});
    const TargetFolder folder(target.folder);
    DownloadStaging staging(target.folder, paths);
    const auto bring = [&](const std::string& name, const std::string& finalPath) {
        fs::copy_file(systemPath(paths.join(source.folder, name)), systemPath(staging.pathFor(finalPath)));
    };
    bring(source.name, projectFileOnDisk(paths, paths.join(target.folder, target.name)));
    for (const std::string_view name : transferredDeviceFiles)
        bring(std::string(name), deviceFileOnDisk(paths, paths.join(target.folder, name)));
    for (const std::string& name : bitmapsOfFolder(source.folder))
        bring(name, paths.join(target.folder, name));
    staging.complete();
}

/// The display's worker fetches into a folder under `scratch`.
FleetTask downloadTask(const FleetDisplay& display, const std::string& target, const std::string& scratch) {
    const PathRules paths = PathRules::native();
    const std::string fetched =
        paths.join(scratch, paths.split(target).value_or(SplitPath{".", target}).name);
    return {display.name,
            displayArgument(display.address),
            {std::string(downloadWorker), displayArgument(display.address), fetched},
            [fetched, target](TransferEnd end) {
                try {
                    bringOver(fetched, target);
                } catch (const fs::filesystem_error& failure) {
                    return failedTransfer(target + ": " + failure.code().message());
                } catch (const std::system_error& failure) { // of a file, which it names
                    return failedTransfer(failure.what());
                }
                return end;
            }};
}

/// FOLDER/NAME/NAME.orx for the displays of a list, else the path that was given.
std::string targetOf(const FleetDisplay& display, const DownloadOptions& options) {
    if (options.fleet.list.empty())
        return options.output;
    const PathRules paths = PathRules::native();
    return DocMgrModule::projectFilePath(paths, paths.join(options.output, display.name), display.name);
}

/// Each with a folder of its own under `scratch`.
std::vector<FleetTask> tasksOf(const std::vector<FleetDisplay>& displays, const DownloadOptions& options,
                               const std::string& scratch) {
    std::vector<FleetTask> tasks;
    tasks.reserve(displays.size());
    for (const FleetDisplay& display : displays) {
        const std::string folder = PathRules::native().join(scratch, std::to_string(tasks.size()));
        fs::create_directory(systemPath(folder));
        tasks.push_back(downloadTask(display, targetOf(display, options), folder));
    }
    return tasks;
}

ExitStatus downloadFromMany(DownloadOptions options) {
    const auto displays = chosenDisplays(options.fleet, {.needsProjects = false});
    if (options.fleet.list.empty())
        options.output = writtenProjectName(options.output);
    else if (options.output.empty()) // such as an unset variable of a script; "/" would be written to
        throw CommandFailure(ExitStatus::Unusable, "the output folder is empty");
    Interruption interruption(watchInput(options.fleet)); // or Ctrl+C would leave the folder
    const ScratchFolder scratch = scratchFolder();
    std::vector<FleetTask> tasks = tasksOf(displays, options, scratch.path());
    FleetOutput output(tasks.size(), options.fleet.json);
    FleetRun fleet(std::move(tasks), options.fleet.jobs, scratch.path(), output);
    const ExitStatus status = output.finish(fleet.run(interruption));
    output.expectWritten();
    return status;
}

ExitStatus download(const DownloadOptions& options) {
    if (options.fleet.displays.empty() == options.fleet.list.empty())
        throw CommandFailure(ExitStatus::Unusable, "download takes either --from or --list");
    return downloadFromMany(options);
}

} // namespace

void addDownload(CLI::App& program, Run& run) {
    const auto options = std::make_shared<DownloadOptions>();
    CLI::App* command = program.add_subcommand("download", "Fetch projects from displays, many at once");
    command
        ->add_option("--from", options->fleet.displays,
                     "A display: NAME, NAME:PORT or [IPv6]:PORT; port " + decimalText(fileTransfer.port))
        ->type_name("DISPLAY")
        ->expected(1);
    addFleetOptions(*command, options->fleet);
    command
        ->add_option("-o,--output", options->output,
                     "The project file to write; .orx may be left out. With --list, the folder for one "
                     "folder of each display")
        ->type_name("PATH")
        ->required();
    command->footer(
        "Examples:\n"
        "  orvista download --from 192.168.1.103 -o fetched/PUMPSTATION.orx\n"
        "  orvista download --list displays.csv -o backup\n\n"
        "Fetches all files of a display or none and saves the project as the editor does, with the "
        "display's\n"
        "address. A list of displays has the columns name, address, port; NAME is saved as NAME/NAME.orx.\n"
        "Ends with status 1 when a display failed, 2 when nothing was begun.");
    command->callback([options, &run] { run = [options] { return download(*options); }; });
}

} // namespace orvista::console
