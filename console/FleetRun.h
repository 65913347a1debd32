#pragma once

#include "console/ChildProcess.h"
#include "console/CommandFailure.h"
#include "console/FleetOutput.h"
#include "console/Interruption.h"
#include "link/FleetResult.h"

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orvista::console {

/// One display's share of a command.
struct FleetTask {
    std::string name;
    std::string address;
    std::vector<std::string> arguments; ///< of the worker, from its command on
    /// What is left to do here when the process is well done; may fail it. Empty for nothing.
    std::function<TransferEnd(TransferEnd)> complete = {};
    std::string refusal = {}; ///< why nothing is done for this display; empty where something is
};

/// Works on many displays, each in a process of its own, a few at once. One that is dead, slow or refuses
/// holds up none of the others. Ctrl+C ends them all.
class FleetRun {
public:
    /// \param jobs so many at once
    /// \param scratch folder for what the processes write meanwhile, UTF-8
    FleetRun(std::vector<FleetTask> tasks, std::size_t jobs, std::string scratch, FleetOutput& output);

    /// One result for each task, in their order.
    std::vector<FleetResult> run(Interruption& interruption);

private:
    using Clock = std::chrono::steady_clock;

    /// A display that is being worked on.
    struct Turn {
        std::size_t task = 0;
        Clock::time_point began;
        std::string unread;               ///< the beginning of a line
        std::vector<std::string> sending; ///< names of the files that were sent so far, and are
        std::size_t arrived = 0;          ///< how many of them the display has taken
        std::size_t of = 0;
        std::optional<TransferEnd> end;
    };

    void begin();
    void takeWhatCame();
    void take(Turn& turn, std::string_view line);
    void note(Turn& turn, DisplayState state);
    void finish(Turn& turn, TransferEnd end);
    void endAll();

    std::vector<FleetTask> tasks_;
    std::size_t jobs_;
    std::vector<ChildProcess::Setting> environment_;
    FleetOutput& output_;
    std::vector<FleetResult> results_;
    std::size_t next_ = 0;
    std::vector<std::unique_ptr<ChildProcess>> processes_;
    std::vector<Turn> turns_; ///< of each process
};

} // namespace orvista::console
