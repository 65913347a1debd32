#pragma once

#include "link/DisplayAddress.h"
#include "link/TransferSteps.h"
#include "model/FetchedFiles.h"

#include <memory>
#include <stdexcept>
#include <string>

/// The files of a display without the editor's dialogs. Downloads, comparing and verifying fetch with these.
namespace orvista {

/// The files of a display could not be fetched; `what()` is a sentence without the display's name.
class FetchFailure : public std::runtime_error {
public:
    FetchFailure(bool connected, const std::string& text) : std::runtime_error(text), connected_(connected) {}
    /// Whether the display took the connection.
    bool connected() const { return connected_; }

private:
    bool connected_;
};

/// The texts that a transfer's steps take.
DocTsfModule::DeviceConnection connectionOf(const DisplayAddress& display);

/// A control with an open link to the display.
/// \throws FetchFailure
std::unique_ptr<TransferControl> connectedControl(const DisplayAddress& display,
                                                  DocTsfModule::TransferProgress& progress,
                                                  const DocTsfModule::TransferControlMaker& makeControl);

/// Fetches the five device files and the bitmaps of `display` into `folder` (UTF-8, there already), as the
/// editor's download does: all of them or none, no name leads out of the folder, what stands there already is
/// replaced. Blocks until it is done, on the caller's thread. ConfigModule::readDeviceFiles reads a project
/// from the folder, a ScratchFolder is one that goes away again.
/// \throws FetchFailure
void fetchDisplayFiles(const DisplayAddress& display, const std::string& folder,
                       DocTsfModule::TransferProgress& progress,
                       const DocTsfModule::TransferControlMaker& makeControl);
/// The same files for whoever only looks at them, which spares the disk.
/// \throws FetchFailure, std::system_error where a folder is needed and cannot be made
FetchedFiles fetchDisplayFiles(const DisplayAddress& display, DocTsfModule::TransferProgress& progress,
                               const DocTsfModule::TransferControlMaker& makeControl);

} // namespace orvista
