#include "console/Commands.h"

#include "compare/ProjectComparison.h"
#include "console/Displays.h"
#include "console/Worker.h"
#include "link/TransferControls.h"
#include "link/TransferredFiles.h"

#include <algorithm>
#include <iterator>
#include <memory>

namespace orvista::console {

namespace {

struct UploadWorkerOptions {
    std::string display;
    std::string project;
    bool skipEqual = false;
    bool verify = false;
};

/// Whether the files of both folders are the same project for the display.
bool areEqual(const std::string& folder, const std::string& fetched) {
    try {
        const Project sent = readFetchedProject(folder, folder);
        const Project there = readFetchedProject(fetched, fetched);
        return compareProjects({sent, bitmapsIn(folder)}, {there, bitmapsIn(fetched)}).none();
    } catch (const CommandFailure&) { // what cannot be read is to be replaced
        return false;
    }
}

/// Holds every byte that was sent against what came back.
std::string faultOfSent(const std::string& folder, const std::string& fetched) {
    const auto allFiles = [](const std::string& of) {
        std::vector<std::string> names(transferredDeviceFiles.begin(), transferredDeviceFiles.end());
        std::ranges::copy(bitmapsOfFolder(of), std::back_inserter(names));
        return filesIn(of, names);
    };
    for (const FileDifference& file : compareFiles(allFiles(folder), allFiles(fetched))) {
        if (file.sizeBefore) // what only the display has was not sent
            return file.name + (file.sizeAfter ? " came back with other bytes" : " did not come back");
    }
    return {};
}

ExitStatus uploadAsWorker(const UploadWorkerOptions& options) {
    const DisplayAddress display = transferAddress(options.display);
    const std::string folder = PathRules::native().split(options.project).value().folder;
    UploadWishes wishes;
    if (options.verify)
        wishes.faultOfSent = [&folder](const std::string& fetched) { return faultOfSent(folder, fetched); };
    if (options.skipEqual)
        wishes.isEqual = [&folder](const std::string& fetched) { return areEqual(folder, fetched); };
    StatePrinter states(options.display);
    return states.finish(uploadToDisplay(display, folder, wishes, states, makeTransferControl));
}

} // namespace

void addUploadWorker(CLI::App& program, Run& run) {
    const auto options = std::make_shared<UploadWorkerOptions>();
    CLI::App* command = program.add_subcommand(std::string(uploadWorker))->group("");
    command->add_option("DISPLAY", options->display)->required();
    command->add_option("PROJECT", options->project, "The project whose folder is sent")->required();
    command->add_flag("--skip-equal", options->skipEqual);
    command->add_flag("--verify", options->verify);
    command->callback([options, &run] { run = [options] { return uploadAsWorker(*options); }; });
}

} // namespace orvista::console
