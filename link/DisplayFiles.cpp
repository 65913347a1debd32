#include "link/DisplayFiles.h"

#include "model/Numbers.h"
#include "model/ScratchFolder.h"

namespace orvista {

DocTsfModule::DeviceConnection connectionOf(const DisplayAddress& display) {
    return {display.host, decimalText(display.port)};
}

std::unique_ptr<TransferControl> connectedControl(const DisplayAddress& display,
                                                  DocTsfModule::TransferProgress& progress,
                                                  const DocTsfModule::TransferControlMaker& makeControl) {
    auto control = makeControl(progress);
    if (!control)
        throw FetchFailure(false, "transfers need the library libcurl, which is missing");
    if (!DocTsfModule::connect(*control, connectionOf(display))) {
        const std::string cause = control->cause();
        throw FetchFailure(false, cause.empty() ? "cannot be connected to" : cause);
    }
    return control;
}

void fetchDisplayFiles(const DisplayAddress& display, const std::string& folder,
                       DocTsfModule::TransferProgress& progress,
                       const DocTsfModule::TransferControlMaker& makeControl) {
    progress.showActivity("Connecting to " + display.host);
    const auto control = connectedControl(display, progress, makeControl);
    progress.showActivity("Downloading files");
    const bool fetched = transferSucceeded(control->DownloadFiles({}, folder));
    const std::string cause = fetched ? std::string() : control->cause();
    control->CloseLink();
    if (fetched)
        return;
    const std::string fault = writingFault(folder);
    throw FetchFailure(true, !fault.empty()   ? fault
                             : !cause.empty() ? cause
                                              : "its files could not be fetched");
}

} // namespace orvista
