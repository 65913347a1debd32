#pragma once

#include "link/FleetList.h"

#include "console/CommandFailure.h"
#include "console/Interruption.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace orvista::console {

/// Which displays a command works on, and how: the same for both directions.
struct FleetOptions {
    std::vector<std::string> displays;
    std::string list;
    std::vector<FleetDisplay> chosen = {}; ///< rows of a master's list, in place of both
    std::size_t jobs = 8;
    bool json = false;
    bool untilInputEnds = false;
    std::string journal;
    std::string report;       ///< of those that write one
    bool onlyChanges = false; ///< leaves out displays that are equal

    /// Whether the displays come from a list, this one or a master's own.
    bool hasList() const { return !list.empty() || !chosen.empty(); }
    /// Whether the results are wanted in a manner that only lists have.
    bool wantsResults() const { return onlyChanges || !report.empty() || !journal.empty(); }
};

/// Adds the options that all of these commands have, but for the displays themselves.
void addFleetOptions(CLI::App& command, FleetOptions& options);
void addReport(CLI::App& command, FleetOptions& options);

WatchInput watchInput(const FleetOptions& options);

struct ChosenDisplays {
    std::vector<FleetDisplay> displays;  ///< those that can be used
    std::optional<CommandFailure> fault; ///< nothing is to be begun then; the list's errors have been told
};

/// The displays named one by one, or those of the list.
/// \throws CommandFailure where one that is named cannot be used, and where the report or the journal would
///         take the place of a file that is read
ChosenDisplays chosenDisplays(const FleetOptions& options, const FleetDefaults& defaults);

} // namespace orvista::console
