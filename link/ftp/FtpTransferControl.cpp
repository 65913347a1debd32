#include "link/ftp/FtpTransferControl.h"

#include "link/TransferCause.h"
#include "link/TransferredFiles.h"
#include "link/ftp/DownloadTarget.h"
#include "link/ftp/FtpCause.h"
#include "link/ftp/FtpLink.h"
#include "link/ftp/RemoteNames.h"
#include "model/BitmapName.h"
#include "model/Files.h"
#include "model/FolderLookup.h"
#include "model/Text.h"

#include <algorithm>
#include <optional>
#include <system_error>
#include <utility>
#include <vector>

namespace orvista {

namespace {

constexpr std::int64_t success = 1;
constexpr std::int64_t failure = 0;
/// Far beyond any bitmap the display can show, and small enough for every disk.
constexpr std::int64_t fileSizeLimit = std::int64_t{64} * 1024 * 1024;

bool isDeviceFile(std::string_view name) {
    return std::ranges::find(transferredDeviceFiles, lowerAscii(name)) != transferredDeviceFiles.end();
}

struct WantedFile {
    std::string remoteName;
    std::string localName; ///< UTF-8
};

/// The five device files and those listed bitmaps that may be written.
std::vector<WantedFile> wantedFiles(const RemoteListing& listing, const DownloadTarget& target,
                                    const PathRules& paths) {
    std::vector<WantedFile> wanted;
    wanted.reserve(transferredDeviceFiles.size() + listing.names().size());
    for (const std::string_view name : transferredDeviceFiles)
        wanted.push_back({listing.variantOf(name), std::string(name)});
    for (const std::string& listed : listing.names()) {
        auto localName = isBitmapName(listed) ? localFileName(listed, paths) : std::nullopt;
        if (localName && target.canHold(*localName))
            wanted.push_back({listed, *std::move(localName)});
    }
    return wanted;
}

} // namespace

FtpTransferControl::FtpTransferControl(FileNotice notice, std::chrono::seconds timeout,
                                       const PathRules& paths, TransferWatch::Clock clock)
    : notice_(std::move(notice)), timeout_(timeout), paths_(paths), clock_(std::move(clock)) {}

FtpTransferControl::~FtpTransferControl() = default;

void FtpTransferControl::RemoteAddress(const std::string& address) {
    address_ = address;
}

void FtpTransferControl::RemotePort(std::int16_t port) {
    port_ = port;
}

std::int64_t FtpTransferControl::failed(std::string cause) {
    cause_ = std::move(cause);
    return failure;
}

std::int64_t FtpTransferControl::OpenLink() {
    CloseLink();
    if (port_ <= 0)
        return failed("there is no such port");
    auto library = CurlLibrary::open();
    if (!library)
        return failed("transfers need the library libcurl, which is missing");
    auto link = std::make_unique<FtpLink>(
        std::move(library),
        FtpLink::Server{address_, static_cast<std::uint16_t>(port_), ftpUser, ftpPassword, timeout_}, clock_,
        isToEnd_);
    if (!link->isOpen())
        return failed(link->cause());
    link_ = std::move(link);
    return success;
}

void FtpTransferControl::CloseLink() {
    link_.reset();
    cause_.clear();
}

void FtpTransferControl::PrepareUpload(const std::string&) {
    if (link_)
        link_->command(uploadBeginsCommand);
}

/// Who does not know the command has confirmed all that it could with the last file.
void FtpTransferControl::FinishUpload() {
    cause_.clear();
    if (!link_)
        return;
    if (!link_->command(uploadEndsCommand))
        cause_ = link_->cause();
    else if (const std::string& reply = link_->lastReply();
             isFtpRefusal(reply) && !isUnknownFtpCommand(reply))
        cause_ = replyCause(reply);
}

std::int64_t FtpTransferControl::UploadFile(const std::string& path) {
    cause_.clear();
    const auto parts = paths_.split(path);
    if (!link_ || !parts)
        return failure;
    const bool ofDevice = isDeviceFile(parts->name);
    const auto name = remoteFileName(ofDevice ? lowerAscii(parts->name) : parts->name);
    if (!name)
        return failed("the display has no such characters in names");
    try {
        FileSource source(ofDevice ? deviceFileOnDisk(paths_, path) : path);
        return link_->store(*name, source) ? success : failed(link_->cause());
    } catch (const OpenFailure& unreadable) {
        return failed("it cannot be read here: " + unreadable.code().message());
    }
}

std::int64_t FtpTransferControl::DownloadFiles(const std::string&, const std::string& folder) {
    cause_.clear();
    if (!link_ || folder.empty())
        return failure;
    FolderTarget target(folder, paths_);
    return download(target);
}

std::optional<std::int64_t> FtpTransferControl::fetchFiles(FetchedFiles& files) {
    cause_.clear();
    if (!link_)
        return failure;
    FetchedTarget target(files);
    return download(target);
}

std::int64_t FtpTransferControl::download(DownloadTarget& target) {
    try {
        return fetchInto(target);
    } catch (const std::system_error& refused) { // whatever the folder or the disk refused
        return failed(refused.what());
    }
}

/// \throws std::system_error
std::int64_t FtpTransferControl::fetchInto(DownloadTarget& target) {
    RemoteListing listing;
    const bool listed = link_->list([&](std::string_view piece) { return listing.append(piece); });
    if (!listing.finish())
        return failed("its list of files is too long");
    if (!listed)
        return failed(withCause("its list of files could not be fetched", link_->cause()));
    const std::vector<WantedFile> wanted = wantedFiles(listing, target, paths_);
    std::vector<std::string> names;
    names.reserve(wanted.size());
    for (const WantedFile& file : wanted)
        names.push_back(file.localName);
    target.expect(names);
    for (std::size_t index = 0; index < wanted.size(); ++index) {
        const WantedFile& file = wanted[index];
        if (notice_)
            notice_(file.localName, index + 1, wanted.size());
        const std::unique_ptr<ByteSink> sink = target.next();
        if (!link_->fetch(file.remoteName, fileSizeLimit, *sink)) {
            noteMissing(file.remoteName, listing);
            return failed(withCause(file.localName + " could not be fetched", link_->cause()));
        }
        sink->close();
    }
    target.complete();
    return success;
}

void FtpTransferControl::noteMissing(const std::string& remoteName, const RemoteListing& listing) const {
    if (!missing_ || listing.has(remoteName))
        return;
    std::vector<std::string> names;
    for (const std::string_view name : transferredDeviceFiles)
        if (!listing.has(listing.variantOf(name)))
            names.emplace_back(name);
    missing_(names);
}

} // namespace orvista
