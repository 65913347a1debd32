#include "console/Commands.h"
#include "model/SystemPath.h"

#include "compare/DisplayContents.h"
#include "console/CompareList.h"
#include "console/FleetCommand.h"
#include "console/GivenProject.h"
#include "console/ProjectDelivery.h"
#include "console/Projects.h"
#include "link/DisplayAddress.h"
#include "model/Numbers.h"
#include "model/ProjectFile.h"
#include "model/UtcTime.h"

#include <CLI/App.hpp>

#include <chrono>
#include <filesystem>
#include <memory>
#include <system_error>

namespace orvista::console {

namespace {

namespace fs = std::filesystem;

struct DownloadOptions {
    FleetOptions fleet;
    std::string output;
    bool hasOutput = false;
    std::string against; ///< path of a master
    bool dated = false;
};

/// A download that went well; the reason also names what it left in the folder.
TransferEnd delivered(TransferEnd end, const std::vector<std::string>& kept) {
    std::string names;
    for (const std::string& name : kept)
        names += (names.empty() ? "kept: " : ", ") + name;
    if (!end.reason.empty() && !names.empty())
        end.reason += "; ";
    end.reason += names;
    return end;
}

/// \param scratch folder of the display's own, into which its worker fetches
void prepareTask(FleetTask& task, const std::string& target, DeliveryFolder folder,
                 const std::string& scratch) {
    const PathRules paths = PathRules::native();
    const std::string fetched =
        paths.join(scratch, paths.split(target).value_or(SplitPath{".", target}).name);
    task.request = {std::string(downloadWork), displayArgument(task.display.address), fetched};
    task.display.project = target;
    task.complete = [fetched, target, folder](const TransferEnd& end) {
        try {
            return delivered(end, deliverProject(fetched, target, folder));
        } catch (const fs::filesystem_error& failure) {
            return failedTransfer(target + ": " + failure.code().message());
        } catch (const std::system_error& failure) { // of a file, which it names
            return failedTransfer(failure.what());
        }
    };
    task.fingerprint = [scratch](const TransferEnd& end) {
        return end.outcome == FleetOutcome::Done ? fingerprint(DisplayContents::ofFolder(scratch))
                                                 : std::string();
    };
}

/// Where the projects of the command's displays go.
class Targets {
public:
    explicit Targets(const DownloadOptions& options)
        : options_(options), date_(utcFolderName(std::chrono::system_clock::now())) {}

    /// FOLDER/NAME/NAME.orx for the displays of a list, FOLDER/NAME/DATE/NAME.orx where dates are wanted,
    /// else the path that was given. \throws CommandFailure where the folder of the date is there
    std::string of(const FleetDisplay& display) const {
        if (options_.fleet.list.empty())
            return options_.output;
        const PathRules paths = PathRules::native();
        std::string folder = paths.join(options_.output, display.name);
        if (options_.dated) {
            folder = paths.join(folder, date_);
            std::error_code unknown;
            if (fs::exists(fs::symlink_status(systemPath(folder), unknown)))
                throw CommandFailure(ExitStatus::Unusable, folder + " is there already; nothing was begun");
        }
        return DocMgrModule::projectFilePath(paths, folder, display.name);
    }

    DeliveryFolder folder() const { return options_.dated ? DeliveryFolder::NewOne : DeliveryFolder::AnyOne; }

private:
    const DownloadOptions& options_;
    std::string date_; ///< the same for all displays of a command
};

/// Each gets a folder of its own under `scratch`.
void prepareTasks(std::vector<FleetTask>& tasks, const DownloadOptions& options, const std::string& scratch) {
    if (options.output.empty()) // such as an unset variable of a script; "/" would be written to
        throw CommandFailure(ExitStatus::Unusable, "the output folder is empty");
    const Targets targets(options);
    std::size_t number = 0;
    for (FleetTask& task : tasks) {
        const std::string folder = PathRules::native().join(scratch, decimalText(number++));
        fs::create_directory(systemPath(folder));
        prepareTask(task, targets.of(task.display), targets.folder(), folder);
    }
}

ExitStatus downloadFromMany(DownloadOptions options) {
    if (options.fleet.list.empty())
        options.output = writtenProjectName(options.output);
    return runOnDisplays(options.fleet, {.needsProjects = false},
                         [&options](std::vector<FleetTask>& tasks, const std::string& scratch,
                                    const Interruption&) { prepareTasks(tasks, options, scratch); });
}

/// Writes nothing.
ExitStatus compareAgainst(const DownloadOptions& options) {
    if (options.fleet.list.empty() || options.hasOutput || options.dated)
        throw CommandFailure(ExitStatus::Unusable, "--against takes --list, and writes nothing");
    if (listOfMaster(options.against).empty())
        throw CommandFailure(ExitStatus::Unusable, options.against + " is not a master");
    return compareList(options.fleet, options.against, false);
}

ExitStatus download(const DownloadOptions& options) {
    if (options.fleet.displays.empty() == options.fleet.list.empty())
        throw CommandFailure(ExitStatus::Unusable, "download takes either --from or --list");
    if (!options.against.empty())
        return compareAgainst(options);
    if (!options.hasOutput)
        throw CommandFailure(ExitStatus::Unusable, "--output is required; see orvista download --help");
    if (options.dated && options.fleet.list.empty())
        throw CommandFailure(ExitStatus::Unusable, "--dated takes --list");
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
        ->type_name("PATH");
    command
        ->add_option("--against", options->against,
                     "With --list, write nothing: tell which displays differ from their project of this "
                     "master, and in what")
        ->type_name("MASTER");
    command->add_flag("--dated", options->dated,
                      "With --list, a folder of this moment (UTC) in each display's folder");
    command->footer(
        "Examples:\n"
        "  orvista download --from 192.168.1.103 -o fetched/PUMPSTATION.orx\n"
        "  orvista download --list displays.csv -o backup\n"
        "  orvista download --list displays.csv --dated -o backup\n"
        "  orvista download --list displays.csv --against PLANT.orx\n\n"
        "Fetches all files of a display or none and saves the project as the editor does, with the "
        "display's\n"
        "address. A list of displays has the columns name, address, port; NAME is saved as NAME/NAME.orx, "
        "with\n"
        "--dated as NAME/2026-11-22T031500Z/NAME.orx. Nothing is removed from a folder that is there: "
        "bitmaps\n"
        "that the display no longer has are named as kept. A display that holds no project is failed.\n"
        "Ends with status 1 when a display failed, 2 when nothing was begun.");
    command->callback([options, command, &run] {
        options->hasOutput = command->count("--output") > 0;
        run = [options] { return download(*options); };
    });
}

} // namespace orvista::console
