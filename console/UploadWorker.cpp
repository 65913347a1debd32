#include "console/Worker.h"

#include "compare/ContentsComparison.h"
#include "console/Displays.h"
#include "link/TransferControls.h"

#include <system_error>

namespace orvista::console {

namespace {

ContentsComparison comparisonOf(const DisplayContents& before, const FetchedFiles& fetched) {
    return compareContents(before, DisplayContents::ofFetched(fetched, before));
}

/// Whether sending the folder's files would change nothing that counts; what cannot be read is to be
/// replaced.
bool hasAll(const std::string& folder, SentContents& sent, const FetchedFiles& fetched) {
    try {
        return comparisonOf(sent.of(folder), fetched).sendingChangesNothing();
    } catch (const std::system_error&) {
        return false;
    }
}

/// Holds every byte that was sent against what came back.
std::string faultOfSent(const DisplayContents& sent, const FetchedFiles& fetched) {
    const ContentsComparison comparison = comparisonOf(sent, fetched);
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

TransferEnd uploadAsWorker(const WorkerRequest& request, StatePrinter& states, SentContents& sent) {
    const std::string folder = PathRules::native().split(request.project).value().folder;
    UploadWishes wishes;
    if (request.verify)
        wishes.faultOfSent = [&](const FetchedFiles& fetched) {
            return faultOfSent(sent.of(folder), fetched);
        };
    if (request.skipEqual)
        wishes.isEqual = [&](const FetchedFiles& fetched) { return hasAll(folder, sent, fetched); };
    return uploadToDisplay(transferAddress(request.display), folder, wishes, states, makeTransferControl);
}

} // namespace orvista::console
