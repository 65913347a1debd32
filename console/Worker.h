#pragma once

#include "compare/DisplayContents.h"
#include "console/ChildProcess.h"
#include "console/FleetLines.h"
#include "link/DisplayUpload.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The process that works on displays, one after the other: a copy of the first one, or started by it with a
/// command that help does not show. It is told of each on its standard input, and what it is to send lies in
/// a folder that is its own already.
namespace orvista::console {

ChildProcess::Work worker();

/// What is to be done for one display.
struct WorkerRequest {
    std::string work; ///< one of the words below
    std::string display;
    /// Path of a project file: of what is sent or compared, or to be written. Its folder is there.
    std::string project;
    bool skipEqual = false; ///< an upload's wishes, as users give them
    bool verify = false;
};
inline constexpr std::string_view uploadWork = "upload";
inline constexpr std::string_view downloadWork = "download";
inline constexpr std::string_view compareWork = "compare";

/// As the worker reads it.
std::string requestBytes(const WorkerRequest& request);

/// Keeps what a worker writes meanwhile in a folder that the first process removes.
/// \param scratch UTF-8
std::vector<ChildProcess::Setting> workerEnvironment(const std::string& scratch);

/// Reports the states of one display as they change.
class StatePrinter final : public UploadProgress {
public:
    void enter(UploadStage stage) override;
    void showActivity(const std::string&) override {}
    void showFile(const std::string& name, std::size_t number, std::size_t count) override;

    /// The last report.
    void finish(const TransferEnd& end) const;

private:
    void printState() const;

    DisplayState state_;
};

/// What is sent or compared, read once for all displays of a project that come one after the other.
class SentContents {
public:
    /// \param folder of a snapshot, UTF-8 \throws std::system_error for a file that cannot be read
    const DisplayContents& of(const std::string& folder);

private:
    std::string folder_;
    std::optional<DisplayContents> contents_;
};

/// Each kind of work. \throws what a display that cannot be worked on throws: the worker makes its end of it
TransferEnd uploadAsWorker(const WorkerRequest& request, StatePrinter& states, SentContents& sent);
TransferEnd downloadAsWorker(const WorkerRequest& request, StatePrinter& states);
TransferEnd compareAsWorker(const WorkerRequest& request, StatePrinter& states, SentContents& sent);

} // namespace orvista::console
