#include "console/CompareList.h"

#include "console/FleetCommand.h"
#include "console/ProjectSnapshots.h"
#include "console/Projects.h"

namespace orvista::console {

ExitStatus compareList(const FleetOptions& options, const std::string& project, bool notWhole) {
    if (!project.empty())
        expectProject(project);
    return runOnDisplays(
        options, {.project = project},
        [&](std::vector<FleetTask>& tasks, const std::string& scratch, const Interruption& interruption) {
            ProjectSnapshots(tasks, scratch, {.notWhole = notWhole, .fingerprints = !options.journal.empty()},
                             interruption)
                .prepare(tasks, compareWork);
        });
}

} // namespace orvista::console
