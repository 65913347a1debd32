#pragma once

#include "console/ChildProcess.h"
#include "console/CommandFailure.h"
#include "console/FleetLines.h"
#include "link/DisplayUpload.h"

#include <string>
#include <string_view>
#include <vector>

/// The process that works on one display, started by the first with a command that help does not show. What
/// it is to send lies in a folder that is its own already.
namespace orvista::console {

/// The commands: DISPLAY and PROJECT follow, and for an upload --skip-equal and --verify as users give them.
inline constexpr std::string_view uploadWorker = "upload-worker";
inline constexpr std::string_view downloadWorker = "download-worker";

/// Keeps what a worker writes meanwhile in a folder that the first process removes.
/// \param scratch UTF-8
std::vector<ChildProcess::Setting> workerEnvironment(const std::string& scratch);

/// Prints the states of one display as they change.
class StatePrinter final : public UploadProgress {
public:
    explicit StatePrinter(const std::string& display) { state_.name = state_.address = display; }

    void enter(UploadStage stage) override;
    void showActivity(const std::string&) override {}
    void showFile(const std::string& name, std::size_t number, std::size_t count) override;

    /// The last line. \returns the status to end with
    ExitStatus finish(const TransferEnd& end);

private:
    void printState();

    DisplayState state_;
};

} // namespace orvista::console
