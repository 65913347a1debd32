#include "link/ftp/FtpTransferControl.h"

#include "link/TransferredFiles.h"
#include "link/ftp/DownloadStaging.h"
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
    std::string shownName;
    std::string finalPath;
};

/// The five device files and those listed bitmaps that may be written.
std::vector<WantedFile> wantedFiles(const RemoteListing& listing, const std::string& folder,
                                    const PathRules& paths) {
    std::vector<WantedFile> wanted;
    wanted.reserve(transferredDeviceFiles.size() + listing.names().size());
    for (const std::string_view name : transferredDeviceFiles)
        wanted.push_back(
            {listing.variantOf(name), std::string(name), deviceFileOnDisk(paths, paths.join(folder, name))});
    for (const std::string& listed : listing.names()) {
        const auto localName = isBitmapName(listed) ? localFileName(listed, paths) : std::nullopt;
        if (!localName)
            continue;
        std::string finalPath = paths.join(folder, *localName);
        if (DownloadStaging::canAppear(finalPath))
            wanted.push_back({listed, *localName, std::move(finalPath)});
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

std::int64_t FtpTransferControl::OpenLink() {
    CloseLink();
    if (port_ <= 0)
        return failure;
    auto library = CurlLibrary::open();
    if (!library)
        return failure;
    auto link = std::make_unique<FtpLink>(
        std::move(library),
        FtpLink::Server{address_, static_cast<std::uint16_t>(port_), ftpUser, ftpPassword, timeout_}, clock_,
        isToEnd_);
    if (!link->isOpen())
        return failure;
    link_ = std::move(link);
    return success;
}

void FtpTransferControl::CloseLink() {
    link_.reset();
}

void FtpTransferControl::PrepareUpload(const std::string&) {
    if (link_)
        link_->command(uploadBeginsCommand);
}

void FtpTransferControl::FinishUpload() {
    if (link_)
        link_->command(uploadEndsCommand);
}

std::int64_t FtpTransferControl::UploadFile(const std::string& path) {
    const auto parts = paths_.split(path);
    if (!link_ || !parts)
        return failure;
    const bool ofDevice = isDeviceFile(parts->name);
    const auto name = remoteFileName(ofDevice ? lowerAscii(parts->name) : parts->name);
    if (!name)
        return failure;
    try {
        FileSource source(ofDevice ? deviceFileOnDisk(paths_, path) : path);
        return link_->store(*name, source) ? success : failure;
    } catch (const OpenFailure&) {
        return failure;
    }
}

std::int64_t FtpTransferControl::DownloadFiles(const std::string&, const std::string& folder) {
    if (!link_ || folder.empty())
        return failure;
    RemoteListing listing;
    const bool listed = link_->list([&](std::string_view piece) { return listing.append(piece); });
    if (!listing.finish() || !listed)
        return failure;
    try {
        const std::vector<WantedFile> wanted = wantedFiles(listing, folder, paths_);
        DownloadStaging staging(folder, paths_);
        std::vector<std::string> stagedPaths;
        stagedPaths.reserve(wanted.size());
        for (const WantedFile& file : wanted)
            stagedPaths.push_back(staging.pathFor(file.finalPath));
        for (std::size_t index = 0; index < wanted.size(); ++index) {
            if (notice_)
                notice_(wanted[index].shownName, index + 1, wanted.size());
            FileSink sink(stagedPaths[index]);
            if (!link_->fetch(wanted[index].remoteName, fileSizeLimit, sink)) {
                noteMissing(wanted[index].remoteName, listing);
                return failure;
            }
            sink.close();
        }
        staging.complete();
    } catch (const std::system_error&) { // whatever the folder or the disk refused
        return failure;
    }
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
