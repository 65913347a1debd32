#pragma once

#include "console/Worker.h"
#include "link/FleetList.h"
#include "link/FleetResult.h"

#include <functional>
#include <string>

namespace orvista::console {

/// One display's share of a command.
struct FleetTask {
    FleetDisplay display;
    WorkerRequest request;
    /// What is left to do here when the worker is well done; may fail it. Empty for nothing.
    std::function<TransferEnd(TransferEnd)> complete = {};
    std::string refusal = {}; ///< why nothing is done for this display; empty where something is
    /// Of the project, or of what came, once the display is over. Empty function: there is none.
    std::function<std::string(const TransferEnd&)> fingerprint = {};
};

/// Of a display whose turn has not come: refused, or not begun.
FleetResult resultWithoutTurn(const FleetTask& task);

} // namespace orvista::console
