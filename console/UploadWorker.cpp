#include "console/Worker.h"

#include "compare/ContentsComparison.h"
#include "console/Displays.h"
#include "link/TransferControls.h"

#include <system_error>

namespace orvista::console {

namespace {

ContentsComparison comparisonOf(const std::string& folder, const FetchedFiles& fetched) {
    const DisplayContents before = DisplayContents::ofFolder(folder);
    return compareContents(before, DisplayContents::ofFetched(fetched, before));
}

/// Whether sending the folder's files would change nothing that counts; what cannot be read is to be
/// replaced.
bool hasAll(const std::string& folder, const FetchedFiles& fetched) {
    try {
        return comparisonOf(folder, fetched).sendingChangesNothing();
    } catch (const std::system_error&) {
        return false;
    }
}

/// Holds every byte that was sent against what came back.
std::string faultOfSent(const std::string& folder, const FetchedFiles& fetched) {
    const ContentsComparison comparison = comparisonOf(folder, fetched);
    for (const auto* const answers : {&comparison.files, &comparison.bitmaps})
        for (const HeldAnswer& answer : *answers) {
            if (answer.state == HeldState::Missing)
                return answer.name + " did not come back";
            if (answer.state == HeldState::Equal || answer.state == HeldState::Different)
                return answer.name + " came back with other bytes";
        }
    return {};
}

} // namespace

TransferEnd uploadAsWorker(const WorkerRequest& request, StatePrinter& states) {
    const std::string folder = PathRules::native().split(request.project).value().folder;
    UploadWishes wishes;
    if (request.verify)
        wishes.faultOfSent = [&folder](const FetchedFiles& fetched) { return faultOfSent(folder, fetched); };
    if (request.skipEqual)
        wishes.isEqual = [&folder](const FetchedFiles& fetched) { return hasAll(folder, fetched); };
    return uploadToDisplay(transferAddress(request.display), folder, wishes, states, makeTransferControl);
}

} // namespace orvista::console
