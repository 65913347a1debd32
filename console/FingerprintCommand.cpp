#include "console/Commands.h"

#include "console/HeldContents.h"
#include "console/Output.h"
#include "console/Projects.h"

#include <CLI/App.hpp>

#include <algorithm>
#include <memory>
#include <system_error>
#include <vector>

/// What tells the contents of projects and displays apart.
namespace orvista::console {

namespace {

struct FingerprintOptions {
    std::vector<std::string> sides;
    std::vector<std::string> displays; ///< of masters
    bool notWhole = false;
};

void printFingerprint(const DisplayContents& contents, const std::string& title) {
    printLine(fingerprint(contents) + "  " + title);
}

ExitStatus printFingerprintsOf(const std::string& side, const FingerprintOptions& options) {
    HeldContents held(side, options.notWhole);
    if (options.displays.empty() || !held.isMaster()) {
        printFingerprint(held.contents(), side);
        return ExitStatus::Well;
    }
    return held.given()->eachView(options.displays, [](const ProjectView& view) {
        printFingerprint(contentsOf(view), view.title);
        return ExitStatus::Well;
    });
}

ExitStatus printFingerprints(const FingerprintOptions& options) {
    ExitStatus status = ExitStatus::Well;
    for (const std::string& side : options.sides) {
        try {
            status = std::max(status, printFingerprintsOf(side, options));
        } catch (const CommandFailure& failure) {
            complain(failure.what());
            status = std::max(status, failure.status());
        } catch (const std::system_error& failure) {
            complain(side + ": " + failure.what());
            status = ExitStatus::Unusable;
        }
    }
    return status;
}

} // namespace

void addFingerprint(CLI::App& program, Run& run) {
    const auto options = std::make_shared<FingerprintOptions>();
    CLI::App* command = program.add_subcommand("fingerprint", "Print twelve digits of what a display shows");
    command
        ->add_option("SIDE", options->sides, "Project files, .orx, or displays: NAME, NAME:PORT, [IPv6]:PORT")
        ->required();
    addDisplayNames(*command, options->displays);
    addNotWhole(*command, options->notWhole);
    command->footer(
        "Examples:\n"
        "  orvista fingerprint PUMPSTATION.orx\n"
        "  orvista fingerprint PUMPSTATION.orx 192.168.1.103 192.168.1.104:7001\n"
        "  orvista fingerprint PLANT.orx --display \"Line 17\" 192.168.1.117\n\n"
        "Two of them are the same exactly when \"orvista compare\" finds nothing that counts: addresses,\n"
        "variables, messages, and the bitmaps that messages show. Ends with status 2 when one cannot be "
        "read.");
    command->callback([options, &run] { run = [options] { return printFingerprints(*options); }; });
}

} // namespace orvista::console
