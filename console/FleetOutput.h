#pragma once

#include "console/CommandFailure.h"
#include "console/FleetLines.h"
#include "console/Output.h"
#include "link/FleetResult.h"

#include <span>

namespace orvista::console {

/// Tells what becomes of the displays: a line for each that is over, or with --json one for each change.
class FleetOutput {
public:
    /// \param count of displays
    FleetOutput(std::size_t count, bool json) : count_(count), json_(json) {}

    void show(const DisplayState& state);
    /// A display is over. \param of how many files there are, 0 where that never came to light
    void show(const FleetResult& result, std::size_t of);
    /// The last lines. \returns the status to end with
    ExitStatus finish(std::span<const FleetResult> results);

private:
    void showProgress();

    std::size_t count_;
    bool json_;
    FleetTally tally_;
    Progress progress_;
};

} // namespace orvista::console
