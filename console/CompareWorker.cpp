#include "console/Worker.h"

#include "compare/DifferenceNames.h"
#include "console/Displays.h"
#include "link/DisplayFiles.h"
#include "link/TransferControls.h"

namespace orvista::console {

TransferEnd compareAsWorker(const WorkerRequest& request, StatePrinter& states, SentContents& sent) {
    const std::string folder = PathRules::native().split(request.project).value().folder;
    states.enter(UploadStage::Comparing);
    const FetchedFiles fetched =
        fetchDisplayFiles(transferAddress(request.display), states, makeTransferControl);
    const DisplayContents& before = sent.of(folder);
    const ContentsComparison comparison =
        compareContents(before, DisplayContents::ofFetched(fetched, before));
    if (comparison.isEqual())
        return {FleetOutcome::Equal, {}, 0};
    return {FleetOutcome::Different, differingText(comparison), 0};
}

} // namespace orvista::console
