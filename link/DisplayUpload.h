#pragma once

#include "link/DisplayAddress.h"
#include "link/FleetResult.h"
#include "link/TransferSteps.h"
#include "model/FetchedFiles.h"

#include <functional>
#include <string>

/// An upload to one display without the editor's dialogs.
namespace orvista {

enum class UploadStage { Connecting, Comparing, Sending, Verifying };

class UploadProgress : public DocTsfModule::TransferProgress {
public:
    virtual void enter(UploadStage stage) = 0;
};

struct UploadWishes {
    /// Whether the display, which has these files, has what is to be sent. Empty: it is not asked.
    std::function<bool(const FetchedFiles& fetched)> isEqual;
    /// What is wrong with the files, which were fetched once more after they were sent; empty where nothing
    /// is. Empty function: they are not fetched.
    std::function<std::string(const FetchedFiles& fetched)> faultOfSent;
};

/// Sends the device files and bitmaps of `folder` (UTF-8) with the steps of the editor's upload. A display
/// whose files cannot be fetched for comparing is sent everything. Blocks until it is done, on the caller's
/// thread; never throws for what the display or the network does.
TransferEnd uploadToDisplay(const DisplayAddress& display, const std::string& folder,
                            const UploadWishes& wishes, UploadProgress& progress,
                            const DocTsfModule::TransferControlMaker& makeControl);

} // namespace orvista
