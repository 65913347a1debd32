#include "link/DisplayUpload.h"

#include "link/DisplayFiles.h"

#include <optional>
#include <utility>

namespace orvista {

namespace {

using DocTsfModule::SentFiles;
using DocTsfModule::TransferControlMaker;

class DisplayUpload {
public:
    DisplayUpload(const DisplayAddress& display, const std::string& folder, UploadProgress& progress,
                  const TransferControlMaker& makeControl)
        : display_(display), folder_(folder), progress_(progress), makeControl_(makeControl) {}

    /// The final result if nothing needs sending (already equal, or unreachable); nullopt to go on and send.
    std::optional<TransferEnd> compare(const UploadWishes& wishes) {
        progress_.enter(UploadStage::Comparing);
        std::optional<FetchedFiles> fetched;
        try {
            fetched = fetchDisplayFiles(display_, progress_, makeControl_);
        } catch (const FetchFailure& failure) {
            return failure.connected() ? std::nullopt : std::optional(failedTransfer(failure.what()));
        }
        if (!wishes.isEqual(*fetched))
            return std::nullopt;
        return TransferEnd{FleetOutcome::Equal, {}, 0};
    }

    TransferEnd send(const UploadWishes& wishes) {
        progress_.enter(UploadStage::Connecting);
        std::unique_ptr<TransferControl> control;
        try {
            control = connectedControl(display_, progress_, makeControl_);
        } catch (const FetchFailure& failure) {
            return failedTransfer(failure.what());
        }
        progress_.enter(UploadStage::Sending);
        const PathRules paths = PathRules::native();
        const SentFiles sent = DocTsfModule::sendFolder(*control, folder_, paths, progress_);
        std::string fault = faultOf(sent, paths);
        if (sent.failedPath)
            return stoppedUpload(sent.arrived, fault);
        const TransferEnd done{FleetOutcome::Done, std::move(fault), sent.arrived.size()};
        return wishes.faultOfSent ? verified(wishes, done) : done;
    }

private:
    TransferEnd verified(const UploadWishes& wishes, const TransferEnd& done) {
        progress_.enter(UploadStage::Verifying);
        std::string fault;
        try {
            fault = wishes.faultOfSent(fetchDisplayFiles(display_, progress_, makeControl_));
        } catch (const FetchFailure& failure) {
            fault = failure.what();
        }
        if (!fault.empty())
            return {FleetOutcome::Failed, "sent, but not verified: " + fault, done.files};
        return done;
    }

    const DisplayAddress& display_;
    const std::string& folder_;
    UploadProgress& progress_;
    const TransferControlMaker& makeControl_;
};

} // namespace

TransferEnd uploadToDisplay(const DisplayAddress& display, const std::string& folder,
                            const UploadWishes& wishes, UploadProgress& progress,
                            const TransferControlMaker& makeControl) {
    DisplayUpload upload(display, folder, progress, makeControl);
    if (wishes.isEqual) {
        if (auto end = upload.compare(wishes))
            return *std::move(end);
    }
    return upload.send(wishes);
}

} // namespace orvista
