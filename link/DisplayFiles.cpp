#include "link/DisplayFiles.h"

#include "model/Numbers.h"
#include "model/ScratchFolder.h"

namespace orvista {

namespace {

/// \param download gives the control's result \param faultOfPlace where the files go, in words
template <typename Download, typename FaultOfPlace>
void fetch(const DisplayAddress& display, DocTsfModule::TransferProgress& progress,
           const DocTsfModule::TransferControlMaker& makeControl, Download download,
           FaultOfPlace faultOfPlace) {
    progress.showActivity("Connecting to " + display.host);
    const auto control = connectedControl(display, progress, makeControl);
    progress.showActivity("Downloading files");
    const bool fetched = transferSucceeded(download(*control));
    const std::string cause = fetched ? std::string() : control->cause();
    control->CloseLink();
    if (fetched)
        return;
    const std::string fault = faultOfPlace();
    throw FetchFailure(true, !fault.empty()   ? fault
                             : !cause.empty() ? cause
                                              : "its files could not be fetched");
}

} // namespace

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
    fetch(
        display, progress, makeControl,
        [&folder](TransferControl& control) { return control.DownloadFiles({}, folder); },
        [&folder] { return writingFault(folder); });
}

FetchedFiles fetchDisplayFiles(const DisplayAddress& display, DocTsfModule::TransferProgress& progress,
                               const DocTsfModule::TransferControlMaker& makeControl) {
    FetchedFiles files;
    fetch(
        display, progress, makeControl,
        [&files](TransferControl& control) {
            const auto result = control.fetchFiles(files);
            return result ? *result : control.DownloadFiles({}, files.toFolder());
        },
        [&files] { return files.folder() ? writingFault(*files.folder()) : std::string(); });
    return files;
}

} // namespace orvista
