#pragma once

#include "link/TransferControl.h"
#include "model/PathRules.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

/// The steps of a transfer, the same for the window and for the commands.
namespace orvista::DocTsfModule {

/// Where a display listens, as two texts (UTF-8): the connection dialog's boxes exactly as the user left
/// them.
struct DeviceConnection {
    std::string txtIP;
    std::string txtPort;
};

/// What a running transfer shows; gone with the object. Nothing of it takes the user's input.
class TransferProgress {
public:
    virtual ~TransferProgress() = default;
    virtual void showActivity(const std::string& text) = 0;
    /// \param number counted from 1
    virtual void showFile(const std::string& name, std::size_t number, std::size_t count) = 0;
    /// A download fails since the device does not have these device files, of which there is at least one.
    virtual void noteMissing(const std::vector<std::string>& /*names*/) {}
    /// Whether the transfer is to fail at once, where its control can do that. Asked every few milliseconds.
    virtual bool isToEnd() const { return false; }
};

/// Makes the control of one transfer; null where there is none, which counts as a failed connection. The
/// progress is shown for as long as the control works.
using TransferControlMaker = std::function<std::unique_ptr<TransferControl>(TransferProgress&)>;

/// False where the device does not take the connection.
/// \throws Overflow for a port beyond 32767; nothing was sent then
bool connect(TransferControl& control, const DeviceConnection& connection);

/// What became of an upload.
struct SentFiles {
    std::vector<std::string> arrived;      ///< names, in the order in which they were sent
    std::optional<std::string> failedPath; ///< of the file that was not taken: the last that was tried
    /// Why that file was not taken, or the end not confirmed; empty where all is well or nobody can tell.
    std::string cause;
};

/// "stdmsg.ilm was not taken: 452 disk full", "the end was not confirmed: hung up"; empty where all is well.
std::string faultOf(const SentFiles& sent, const PathRules& paths);

/// Sends the five device files of `folder` and then its bitmaps over an open link, tells the device of the
/// beginning and, where every file arrived, of the end, and closes the link.
/// \param folder UTF-8
SentFiles sendFolder(TransferControl& control, const std::string& folder, const PathRules& paths,
                     TransferProgress& progress);

} // namespace orvista::DocTsfModule
