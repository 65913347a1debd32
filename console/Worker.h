#pragma once

#include "console/ChildProcess.h"
#include "console/CommandFailure.h"
#include "console/FleetLines.h"
#include "link/DisplayUpload.h"

#include <string>
#include <vector>

/// The process that works on one display, started by the first with the command that a user would give for
/// that display alone. What it is to send lies in a folder that is its own already.
namespace orvista::console {

bool isWorker();
/// What tells a worker that it is one, and keeps what it writes meanwhile in a folder that the first removes.
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
