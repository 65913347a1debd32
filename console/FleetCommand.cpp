#include "console/FleetCommand.h"

#include "console/Displays.h"
#include "console/FleetOutput.h"
#include "console/FleetRun.h"

#include <optional>
#include <system_error>
#include <utility>

namespace orvista::console {

namespace {

/// Why nothing is to be begun; nothing where all is ready.
std::optional<CommandFailure> faultOfPreparing(const ChosenDisplays& chosen, const PrepareTasks& prepare,
                                               std::vector<FleetTask>& tasks, const std::string& scratch,
                                               const Interruption& interruption) {
    if (chosen.fault)
        return chosen.fault;
    try {
        prepare(tasks, scratch, interruption);
        return std::nullopt;
    } catch (const CommandFailure& failure) {
        return failure;
    } catch (const std::system_error& failure) {
        return CommandFailure(ExitStatus::Unusable, failure.what());
    }
}

} // namespace

ExitStatus runOnDisplays(const FleetOptions& options, const FleetDefaults& defaults,
                         const PrepareTasks& prepare) {
    // First of all: Ctrl+C would leave the folder, and nothing would be told.
    Interruption interruption(watchInput(options));
    const ChosenDisplays chosen = chosenDisplays(options, defaults);
    const ScratchFolder scratch = scratchFolder();
    std::vector<FleetTask> tasks;
    tasks.reserve(chosen.displays.size());
    for (const FleetDisplay& display : chosen.displays)
        tasks.push_back({display, {}});
    FleetOutput output(tasks.size(), options);
    if (const auto fault = faultOfPreparing(chosen, prepare, tasks, scratch.path(), interruption))
        return output.stop(tasks, *fault);
    FleetRun fleet(std::move(tasks), options.jobs, scratch.path(), output);
    return output.finish(fleet.run(interruption));
}

} // namespace orvista::console
