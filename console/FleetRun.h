#pragma once

#include "console/ChildProcess.h"
#include "console/FleetOutput.h"
#include "console/FleetTask.h"
#include "console/Interruption.h"
#include "link/FleetResult.h"

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orvista::console {

/// Works on many displays, a few at once, each by a process that takes one after the other. One that is dead,
/// slow or refuses holds up none of the others, and a process that dies costs only the display it worked on.
/// Ctrl+C ends them all.
class FleetRun {
public:
    /// \param jobs how many at once
    /// \param scratch folder for what the processes write meanwhile, UTF-8
    FleetRun(std::vector<FleetTask> tasks, std::size_t jobs, std::string scratch, FleetOutput& output);

    /// One result for each task, in their order.
    std::vector<FleetResult> run(Interruption& interruption);

private:
    using Clock = std::chrono::steady_clock;

    /// A display that is being worked on.
    struct ActiveTask {
        std::size_t index = 0; ///< of its task
        Clock::time_point began;
        std::string unread;               ///< the beginning of a report
        std::vector<std::string> sending; ///< names of the files that were sent so far, and are
        std::size_t arrived = 0;          ///< how many of them the display has taken
        std::size_t of = 0;
        std::optional<TransferEnd> end;
    };

    bool begin();
    void start(ActiveTask active);
    void takeWhatCame();
    void takeReports(ActiveTask& active);
    void note(ActiveTask& active, DisplayState state);
    void finish(ActiveTask& active, TransferEnd end);
    void endAll();

    std::vector<FleetTask> tasks_;
    std::size_t jobs_;
    std::vector<ChildProcess::Setting> environment_;
    std::shared_ptr<const void> library_; ///< of transfers, for the processes to begin with
    FleetOutput& output_;
    std::vector<FleetResult> results_;
    std::size_t next_ = 0;
    std::vector<std::unique_ptr<ChildProcess>> processes_;
    std::vector<ActiveTask> activeTasks_;             ///< of each process
    std::vector<std::unique_ptr<ChildProcess>> idle_; ///< done with their display
};

} // namespace orvista::console
