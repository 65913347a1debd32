#include "link/DisplayUpload.h"

#include "link/DisplayFiles.h"
#include "link/TransferredFiles.h"
#include "model/FolderLookup.h"
#include "model/ScratchFolder.h"

#include <algorithm>
#include <array>
#include <optional>
#include <span>
#include <utility>

namespace orvista {

namespace {

using DocTsfModule::SentFiles;
using DocTsfModule::TransferControlMaker;

bool haveSameBytes(const std::string& left, const std::string& right) {
    constexpr std::size_t pieceSize = 32 * 1024;
    std::array<char, pieceSize> leftPiece{};
    std::array<char, pieceSize> rightPiece{};
    FileSource leftFile(left);
    FileSource rightFile(right);
    const auto fill = [](FileSource& file, std::array<char, pieceSize>& piece) {
        std::size_t size = 0;
        while (const std::size_t count = file.read(piece.data() + size, piece.size() - size))
            size += count;
        return std::string_view(piece.data(), size);
    };
    for (;;) {
        const std::string_view leftBytes = fill(leftFile, leftPiece);
        if (leftBytes != fill(rightFile, rightPiece))
            return false;
        if (leftBytes.empty())
            return true;
    }
}

/// What is wrong with the files that came back; empty where all of them are as they were sent.
std::string faultOfFetched(const std::string& sentFolder, const std::string& fetchedFolder,
                           std::span<const std::string> names) {
    const PathRules paths = PathRules::native();
    const std::size_t deviceFileCount = transferredDeviceFiles.size();
    for (std::size_t i = 0; i < names.size(); ++i) {
        const std::string path = paths.join(fetchedFolder, names[i]);
        try {
            if (!haveSameBytes(paths.join(sentFolder, names[i]),
                               i < deviceFileCount ? deviceFileOnDisk(paths, path) : path))
                return names[i] + " came back with other bytes";
        } catch (const std::system_error&) {
            return names[i] + " did not come back";
        }
    }
    return {};
}

class DisplayUpload {
public:
    DisplayUpload(const DisplayAddress& display, const std::string& folder, UploadProgress& progress,
                  const TransferControlMaker& makeControl)
        : display_(display), folder_(folder), progress_(progress), makeControl_(makeControl) {}

    /// The display has everything, or cannot be reached; nothing where it is to be sent to.
    std::optional<TransferEnd> compare(const UploadWishes& wishes) {
        progress_.enter(UploadStage::Comparing);
        const ScratchFolder fetched;
        try {
            fetchDisplayFiles(display_, fetched.path(), progress_, makeControl_);
        } catch (const FetchFailure& failure) {
            return failure.connected() ? std::nullopt : std::optional(failedTransfer(failure.what()));
        }
        if (!wishes.isEqual(fetched.path()))
            return std::nullopt;
        return TransferEnd{FleetOutcome::Equal, {}, 0};
    }

    TransferEnd send(const UploadWishes& wishes) {
        progress_.enter(UploadStage::Connecting);
        const auto control = makeControl_(progress_);
        if (!control || !DocTsfModule::connect(*control, connectionOf(display_)))
            return failedTransfer(connectFault);
        progress_.enter(UploadStage::Sending);
        const PathRules paths = PathRules::native();
        const SentFiles sent = DocTsfModule::sendFolder(*control, folder_, paths, progress_);
        if (sent.failedPath)
            return stoppedUpload(sent.arrived, paths.split(*sent.failedPath)->name + " was not taken");
        if (wishes.verify)
            return verified(sent.arrived);
        return {FleetOutcome::Done, {}, sent.arrived.size()};
    }

private:
    TransferEnd verified(const std::vector<std::string>& names) {
        progress_.enter(UploadStage::Verifying);
        const ScratchFolder fetched;
        std::string fault;
        try {
            fetchDisplayFiles(display_, fetched.path(), progress_, makeControl_);
            fault = faultOfFetched(folder_, fetched.path(), names);
        } catch (const FetchFailure& failure) {
            fault = failure.what();
        }
        if (!fault.empty())
            return {FleetOutcome::Failed, "sent, but not verified: " + fault, names.size()};
        return {FleetOutcome::Done, {}, names.size()};
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
