#include "console/Worker.h"

#include "check/FileFindings.h"
#include "compare/DisplayContents.h"
#include "console/CommandFailure.h"
#include "console/Displays.h"
#include "console/Projects.h"
#include "link/DisplayFiles.h"
#include "link/TransferControls.h"
#include "link/TransferredFiles.h"
#include "model/Windows1252.h"

#include <utility>

namespace orvista::console {

/// Fetches into the folder of the project, and saves it there.
TransferEnd downloadAsWorker(const WorkerRequest& request, StatePrinter& states) {
    const DisplayAddress display = transferAddress(request.display);
    const std::string folder = PathRules::native().split(request.project).value().folder;
    states.enter(UploadStage::Connecting);
    fetchDisplayFiles(display, folder, states, makeTransferControl);
    if (!DisplayContents::ofFolder(folder).holdsProject())
        throw CommandFailure(ExitStatus::Unusable, "holds no project");
    FileRemarks remarks;
    Project project = readFetchedProject(folder, display.host, &remarks);
    project.IP = windows1252FromUtf8(display.host).value_or(std::string());
    saveProject(request.project, project);
    std::string loss = isNotWhole(remarks) ? lossText({}, remarks) : std::string();
    return {FleetOutcome::Done, std::move(loss),
            transferredDeviceFiles.size() + bitmapsOfFolder(folder).size()};
}

} // namespace orvista::console
