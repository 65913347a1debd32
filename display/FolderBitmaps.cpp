#include "display/FolderBitmaps.h"

#include "model/BitmapFiles.h"
#include "model/Files.h"
#include "model/SystemPath.h"
#include "model/Text.h"
#include "model/Windows1252.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace orvista {

namespace {

namespace fs = std::filesystem;

/// The coarsest clock of a file system in use, FAT's.
constexpr std::chrono::seconds clockStep{2};

/// So long a listing counts that may miss a change: scripts may ask for thousands of names at once.
constexpr std::chrono::milliseconds unsettledListing{200};

bool isSettledAfter(fs::file_time_type changed) {
    return changed + clockStep < fs::file_time_type::clock::now();
}

bool isBareName(std::string_view name) {
    return !name.empty() && name.find_first_of("/\\:") == std::string_view::npos &&
           name.find('\0') == std::string_view::npos;
}

/// Nothing when the file cannot be read.
FoundBitmap readBitmap(const fs::path& path, std::uintmax_t size) {
    if (size > maximumBitmapBytes)
        return {nullptr, BitmapError::TooLong};
    try {
        FileSource source(utf8Path(path));
        std::string bytes(static_cast<std::size_t>(size) + 1, '\0');
        std::size_t length = 0;
        while (const std::size_t more = source.read(bytes.data() + length, bytes.size() - length))
            length += more;
        return decodedBitmap(std::string_view(bytes).substr(0, length));
    } catch (const std::system_error&) {
        return {nullptr, BitmapError::NotReadable};
    }
}

bool showSame(const FoundBitmap& one, const FoundBitmap& other) {
    const bool bothShown = one.image && other.image;
    return bothShown ? *one.image == *other.image : one.image == other.image && one.error == other.error;
}

} // namespace

FolderBitmaps::FolderBitmaps(const std::string& folder, Links links)
    : folder_(systemPath(folder)), links_(links) {}

FoundBitmap FolderBitmaps::bitmap(std::string_view name) const {
    if (!isBareName(name))
        return {};
    std::string onDisk(name);
    fs::path path = pathOf(name);
    if (!isFile(path)) {
        files_.erase(onDisk);
        const std::optional<std::string> variant = nameInAnyCase(name);
        if (!variant || !isFile(pathOf(*variant)))
            return {};
        onDisk = *variant;
        path = pathOf(*variant);
    }
    return read(onDisk, path);
}

std::vector<std::string> FolderBitmaps::names() const {
    std::vector<std::string> names;
    for (const std::string& utf8 : bitmapsOfFolder(utf8Path(folder_)))
        if (auto name = windows1252FromUtf8(utf8))
            names.push_back(std::move(*name));
    return names;
}

const FoundBitmap& FolderBitmaps::read(const std::string& name, const fs::path& path) const {
    const std::optional<FileStamp> stamp = fileStamp(path);
    File& file = files_[name];
    if (file.isSettled && file.stamp == stamp)
        return file.content;
    const bool isSettled = stamp && isSettledAfter(stamp->changed);
    FoundBitmap content =
        stamp ? readBitmap(path, stamp->size) : FoundBitmap{nullptr, BitmapError::NotReadable};
    if (!showSame(content, file.content))
        file.content = std::move(content);
    file.stamp = stamp;
    file.isSettled = isSettled;
    return file.content;
}

std::optional<std::string> FolderBitmaps::nameInAnyCase(std::string_view name) const {
    std::error_code error;
    const Time changed = fs::last_write_time(folder_, error);
    if (error)
        return std::nullopt;
    if (!listing_ || listing_->changed != changed || !isCurrent(*listing_))
        list(changed);
    const auto found = listing_->names.find(lowerAscii(name));
    return found == listing_->names.end() ? std::nullopt : std::optional(found->second);
}

bool FolderBitmaps::isCurrent(const Listing& listing) {
    return listing.isSettled || std::chrono::steady_clock::now() - listing.made < unsettledListing;
}

void FolderBitmaps::list(Time changed) const {
    listing_ = Listing{changed, isSettledAfter(changed), std::chrono::steady_clock::now(), {}};
    std::error_code error;
    for (fs::directory_iterator entry(folder_, error), end; !error && entry != end; entry.increment(error)) {
        const auto name = windows1252FromUtf8(utf8Path(entry->path().filename()));
        if (!name)
            continue;
        // Names that differ in case only are told apart by their bytes.
        std::string& chosen = listing_->names[lowerAscii(*name)];
        chosen = std::max(chosen, *name);
    }
}

fs::path FolderBitmaps::pathOf(std::string_view name) const {
    const fs::path file = systemPath(utf8FromWindows1252(name));
    return file.empty() ? fs::path() : folder_ / file;
}

bool FolderBitmaps::isFile(const fs::path& path) const {
    std::error_code error;
    return !path.empty() && fs::is_regular_file(links_ == Links::Followed ? fs::status(path, error)
                                                                          : fs::symlink_status(path, error));
}

} // namespace orvista
