#include "link/DisplayFiles.h"

#include "model/Numbers.h"

namespace orvista {

DocTsfModule::DeviceConnection connectionOf(const DisplayAddress& display) {
    return {display.host, decimalText(display.port)};
}

void fetchDisplayFiles(const DisplayAddress& display, const std::string& folder,
                       DocTsfModule::TransferProgress& progress,
                       const DocTsfModule::TransferControlMaker& makeControl) {
    progress.showActivity("Connecting to " + display.host);
    const auto control = makeControl(progress);
    if (!control || !DocTsfModule::connect(*control, connectionOf(display)))
        throw FetchFailure(false, connectFault);
    progress.showActivity("Downloading files");
    const bool fetched = transferSucceeded(control->DownloadFiles({}, folder));
    control->CloseLink();
    if (!fetched)
        throw FetchFailure(true, "its files could not be fetched");
}

} // namespace orvista
