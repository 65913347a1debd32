#pragma once

#include "console/CommandFailure.h"
#include "console/FleetOptions.h"
#include "console/FleetTask.h"
#include "console/Interruption.h"

#include <functional>
#include <string>
#include <vector>

namespace orvista::console {

/// Makes the displays' tasks ready, which have nothing but their display yet.
/// \param scratch folder for what is written meanwhile, UTF-8
/// \param interruption ends it early, with tasks that are not ready: none of them is begun then
/// \throws CommandFailure, std::system_error where nothing is to be begun; the tasks' refusals count all the
///         same
using PrepareTasks = std::function<void(std::vector<FleetTask>& tasks, const std::string& scratch,
                                        const Interruption& interruption)>;

/// The whole of a command on many displays: whatever ends it, Ctrl+C included, tells what became of each
/// display that can be used.
/// \throws CommandFailure where that cannot be written, and for what FleetOptions cannot be used for
ExitStatus runOnDisplays(const FleetOptions& options, const FleetDefaults& defaults,
                         const PrepareTasks& prepare);

} // namespace orvista::console
