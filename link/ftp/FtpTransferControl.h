#pragma once

#include "link/TransferControl.h"
#include "link/ftp/TransferWatch.h"
#include "model/PathRules.h"

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orvista {

class DownloadTarget;
class FtpLink;
class RemoteListing;

/// The commands that tell the device of an upload, sent on the control connection outside any transfer.
/// A server that does not know them is served all the same.
inline constexpr std::string_view uploadBeginsCommand = "SITE UPLOAD BEGIN";
inline constexpr std::string_view uploadEndsCommand = "SITE UPLOAD END";

/// The account the device expects.
inline constexpr const char* ftpUser = "admin";
inline constexpr const char* ftpPassword = "";

/// Speaks plain passive FTP with the device. Files lie in the folder the login lands in, named with the bytes
/// of the device's encoding; the five device files are always lower-case there.
///
/// `UploadFile` stores under the bare name of the path and fails for a name that the encoding does not have
/// or that holds control characters. `DownloadFiles` fetches the five device files and the bitmaps and
/// nothing else, but for names that cannot be taken here; all of them are fetched before the first one
/// appears under its final name, so that a failed download leaves the folder as it was. A folder in the way
/// of a file fails it before anything is fetched.
///
/// There is no retry: a link that breaks stays broken until the next OpenLink.
class FtpTransferControl final : public TransferControl {
public:
    /// Called before each file of a download: its name, its number counted from 1, and how many there are.
    using FileNotice = std::function<void(const std::string& name, std::size_t number, std::size_t count)>;

    /// \param timeout how long connecting may last, and how long the other end may be silent
    /// \param clock what silence and speed of a file are measured with
    explicit FtpTransferControl(FileNotice notice = {},
                                std::chrono::seconds timeout = std::chrono::seconds(10),
                                const PathRules& paths = PathRules::native(),
                                TransferWatch::Clock clock = &std::chrono::steady_clock::now);
    ~FtpTransferControl() override;
    FtpTransferControl(const FtpTransferControl&) = delete;
    FtpTransferControl& operator=(const FtpTransferControl&) = delete;

    /// Called with the device files that the other end does not list, where a download fails for one of them.
    void onMissing(std::function<void(const std::vector<std::string>& names)> notice) {
        missing_ = std::move(notice);
    }

    /// Whatever the control does fails at once when this gets true. For the links opened from now on.
    void endWhen(std::function<bool()> isToEnd) { isToEnd_ = std::move(isToEnd); }

    void RemoteAddress(const std::string& address) override;
    void RemotePort(std::int16_t port) override;
    std::int64_t OpenLink() override;
    void CloseLink() override;
    void PrepareUpload(const std::string& argument) override;
    void FinishUpload() override;
    std::int64_t UploadFile(const std::string& path) override;
    std::int64_t DownloadFiles(const std::string& argument, const std::string& folder) override;
    std::optional<std::int64_t> fetchFiles(FetchedFiles& files) override;
    std::string cause() const override { return cause_; }

private:
    std::int64_t failed(std::string cause);
    std::int64_t download(DownloadTarget& target);
    std::int64_t fetchInto(DownloadTarget& target);

    void noteMissing(const std::string& remoteName, const RemoteListing& listing) const;

    FileNotice notice_;
    std::function<void(const std::vector<std::string>& names)> missing_;
    std::chrono::seconds timeout_;
    PathRules paths_;
    TransferWatch::Clock clock_;
    std::function<bool()> isToEnd_;
    std::string address_;
    std::int16_t port_ = 0;
    std::unique_ptr<FtpLink> link_;
    std::string cause_; ///< of the last operation
};

} // namespace orvista
