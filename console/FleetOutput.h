#pragma once

#include "console/CommandFailure.h"
#include "console/FleetJournal.h"
#include "console/FleetLines.h"
#include "console/FleetOptions.h"
#include "console/FleetTask.h"
#include "console/Output.h"

#include <optional>
#include <string>
#include <vector>

namespace orvista::console {

/// Tells what becomes of the displays: a line for each that is over, or with --json one for each change; a
/// line of the journal; and at the end the report. Where the lines go to a full disk the transfers go on all
/// the same.
class FleetOutput {
public:
    /// \param count of displays
    /// \param options must outlive the object
    FleetOutput(std::size_t count, const FleetOptions& options)
        : count_(count), options_(options), journal_(options.journal) {}

    void show(const DisplayState& state);
    /// A display is over. \param of how many files there are, 0 where that never came to light
    void show(const FleetTask& task, const FleetResult& result, std::size_t of);
    /// The last lines, and the report.
    /// \returns the status to end with
    /// \throws CommandFailure where something could not be written
    ExitStatus finish(std::vector<FleetResult> results);
    /// The same where nothing was begun, for the displays that are known; `why` is told.
    ExitStatus stop(const std::vector<FleetTask>& tasks, const CommandFailure& why);

private:
    void write(const std::string& text);
    void writeResults(std::vector<FleetResult> results);
    void showProgress();

    std::size_t count_;
    const FleetOptions& options_;
    FleetJournal journal_;
    FleetTally tally_;
    std::optional<CommandFailure> failure_;
    Progress progress_;
};

} // namespace orvista::console
