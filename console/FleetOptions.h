#pragma once

#include "link/FleetList.h"

#include "console/Interruption.h"

#include <cstddef>
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
    std::size_t jobs = 8;
    bool json = false;
    bool untilInputEnds = false;
};

/// Adds the options that both directions have, but for the displays themselves.
void addFleetOptions(CLI::App& command, FleetOptions& options);

WatchInput watchInput(const FleetOptions& options);

/// The displays named one by one, or those of the list.
/// \throws CommandFailure where one cannot be used; every reason has been told then
std::vector<FleetDisplay> chosenDisplays(const FleetOptions& options, const FleetDefaults& defaults);

} // namespace orvista::console
