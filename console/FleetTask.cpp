#include "console/FleetTask.h"

namespace orvista::console {

FleetResult resultWithoutTurn(const FleetTask& task) {
    return {task.display.name, displayArgument(task.display.address),
            task.refusal.empty() ? notBegun() : TransferEnd{FleetOutcome::Refused, task.refusal, 0}, 0};
}

} // namespace orvista::console
