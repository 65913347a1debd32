#pragma once

#include "console/CommandFailure.h"
#include "console/FleetLines.h"
#include "console/Output.h"
#include "link/FleetResult.h"

#include <optional>
#include <span>
#include <string>

namespace orvista::console {

/// Tells what becomes of the displays: a line for each that is over, or with --json one for each change.
/// Where the lines go to a full disk the transfers go on all the same.
class FleetOutput {
public:
    /// \param count of displays
    FleetOutput(std::size_t count, bool json) : count_(count), json_(json) {}

    void show(const DisplayState& state);
    /// A display is over. \param of how many files there are, 0 where that never came to light
    void show(const FleetResult& result, std::size_t of);
    /// The last lines. \returns the status to end with
    ExitStatus finish(std::span<const FleetResult> results);
    /// \throws CommandFailure where a line could not be written
    void expectWritten() const;

private:
    void write(const std::string& text);
    void showProgress();

    std::size_t count_;
    bool json_;
    FleetTally tally_;
    std::optional<CommandFailure> failure_;
    Progress progress_;
};

} // namespace orvista::console
