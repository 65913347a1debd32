#include "console/Commands.h"

#include "compare/DisplayContents.h"
#include "console/Displays.h"
#include "console/Projects.h"
#include "console/Worker.h"
#include "link/DisplayFiles.h"
#include "link/TransferControls.h"
#include "link/TransferredFiles.h"
#include "model/Windows1252.h"

#include <CLI/App.hpp>

#include <memory>
#include <system_error>

namespace orvista::console {

namespace {

struct DownloadWorkerOptions {
    std::string display;
    std::string path;
};

/// Fetches into the folder of `path`, there already, and saves the project there.
/// \throws FetchFailure, CommandFailure, std::system_error for a file that cannot be read again
std::size_t fetchProject(const DisplayAddress& display, const std::string& path, StatePrinter& states) {
    const std::string folder = PathRules::native().split(path).value().folder;
    states.enter(UploadStage::Connecting);
    fetchDisplayFiles(display, folder, states, makeTransferControl);
    if (!DisplayContents::ofFolder(folder).holdsProject())
        throw CommandFailure(ExitStatus::Unusable, "holds no project");
    Project project = readFetchedProject(folder, display.host);
    project.IP = windows1252FromUtf8(display.host).value_or(std::string());
    saveProject(path, project);
    return transferredDeviceFiles.size() + bitmapsOfFolder(folder).size();
}

ExitStatus downloadAsWorker(const DownloadWorkerOptions& options) {
    StatePrinter states(options.display);
    TransferEnd end;
    try {
        end.files = fetchProject(transferAddress(options.display), options.path, states);
        end.outcome = FleetOutcome::Done;
    } catch (const FetchFailure& failure) {
        end = failedTransfer(failure.what());
    } catch (const CommandFailure& failure) {
        end = failedTransfer(failure.what());
    } catch (const std::system_error& failure) {
        end = failedTransfer(failure.what());
    }
    return states.finish(end);
}

} // namespace

void addDownloadWorker(CLI::App& program, Run& run) {
    const auto options = std::make_shared<DownloadWorkerOptions>();
    CLI::App* command = program.add_subcommand(std::string(downloadWorker))->group("");
    command->add_option("DISPLAY", options->display)->required();
    command->add_option("PROJECT", options->path, "The project file to write; its folder is there already")
        ->required();
    command->callback([options, &run] { run = [options] { return downloadAsWorker(*options); }; });
}

} // namespace orvista::console
