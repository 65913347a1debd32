#include "console/Worker.h"

#include "compare/DifferenceNames.h"
#include "console/Displays.h"
#include "link/DisplayFiles.h"
#include "link/TransferControls.h"
#include "model/ScratchFolder.h"

namespace orvista::console {

TransferEnd compareAsWorker(const WorkerRequest& request, StatePrinter& states, SentContents& sent) {
    const std::string folder = PathRules::native().split(request.project).value().folder;
    states.enter(UploadStage::Comparing);
    const ScratchFolder fetched;
    fetchDisplayFiles(transferAddress(request.display), fetched.path(), states, makeTransferControl);
    const ContentsComparison comparison =
        compareContents(sent.of(folder), DisplayContents::ofFolder(fetched.path()));
    if (comparison.isEqual())
        return {FleetOutcome::Equal, {}, 0};
    return {FleetOutcome::Different, differingText(comparison), 0};
}

} // namespace orvista::console
