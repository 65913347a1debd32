#include "console/Commands.h"

#include "compare/ContentsComparison.h"
#include "console/Displays.h"
#include "console/Worker.h"
#include "link/TransferControls.h"
#include "link/TransferredFiles.h"

#include <CLI/App.hpp>

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

ContentsComparison comparisonOf(const std::string& folder, const std::string& fetched) {
    return compareContents(DisplayContents::ofFolder(folder), DisplayContents::ofFolder(fetched));
}

/// Whether sending the folder's files would change nothing that counts; what cannot be read is to be
/// replaced.
bool hasAll(const std::string& folder, const std::string& fetched) {
    try {
        return comparisonOf(folder, fetched).sendingChangesNothing();
    } catch (const std::system_error&) {
        return false;
    }
}

/// Holds every byte that was sent against what came back.
std::string faultOfSent(const std::string& folder, const std::string& fetched) {
    const ContentsComparison comparison = comparisonOf(folder, fetched);
    for (const auto* const answers : {&comparison.files, &comparison.bitmaps})
        for (const HeldAnswer& answer : *answers) {
            if (answer.state == HeldState::Missing)
                return answer.name + " did not come back";
            if (answer.state == HeldState::Equal || answer.state == HeldState::Different)
                return answer.name + " came back with other bytes";
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
        wishes.isEqual = [&folder](const std::string& fetched) { return hasAll(folder, fetched); };
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
