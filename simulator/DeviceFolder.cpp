#include "simulator/DeviceFolder.h"

#include "model/Files.h"
#include "model/SystemPath.h"
#include "model/Windows1252.h"

#include <algorithm>
#include <chrono>
#include <fstream>

namespace orvista {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t mostListedFiles = 10'000;

// Hidden, so that it is never listed or fetched; the service writes one file at a time.
constexpr const char* incomingName = ".incoming";

bool isPlainFile(const fs::path& path) {
    std::error_code error;
    return fs::is_regular_file(fs::symlink_status(path, error));
}

std::int64_t modificationTime(const fs::path& path) {
    std::error_code error;
    const auto time = fs::last_write_time(path, error);
    if (error)
        return 0;
    const auto system = std::chrono::file_clock::to_sys(time);
    return std::chrono::duration_cast<std::chrono::seconds>(system.time_since_epoch()).count();
}

} // namespace

std::optional<fs::path> DeviceFolder::pathOf(std::string_view name) const {
    const std::optional<std::string> bare = deviceFileName(name);
    if (!bare || *bare != name)
        return std::nullopt;
    return systemPath(path_) / systemPath(utf8FromWindows1252(name));
}

std::vector<ListedFile> DeviceFolder::list() const {
    std::vector<ListedFile> files;
    std::error_code error;
    for (fs::directory_iterator entry(systemPath(path_), error), end;
         !error && entry != end && files.size() < mostListedFiles; entry.increment(error)) {
        const std::optional<std::string> name = windows1252FromUtf8(utf8Path(entry->path().filename()));
        if (!name)
            continue;
        if (std::optional<ListedFile> file = find(*name))
            files.push_back(std::move(*file));
    }
    std::sort(files.begin(), files.end(),
              [](const ListedFile& left, const ListedFile& right) { return left.name < right.name; });
    return files;
}

std::optional<ListedFile> DeviceFolder::find(std::string_view name) const {
    const std::optional<fs::path> path = pathOf(name);
    if (!path || !isPlainFile(*path))
        return std::nullopt;
    std::error_code error;
    const std::uintmax_t size = fs::file_size(*path, error);
    if (error)
        return std::nullopt;
    return ListedFile{std::string(name), size, modificationTime(*path)};
}

std::optional<std::string> DeviceFolder::read(std::string_view name) const {
    const std::optional<ListedFile> file = find(name);
    if (!file || file->size > largestDeviceFile)
        return std::nullopt;
    std::ifstream stream(*pathOf(name), std::ios::binary);
    std::string bytes(static_cast<std::size_t>(file->size), '\0');
    stream.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return stream ? std::optional(std::move(bytes)) : std::nullopt;
}

bool DeviceFolder::store(std::string_view name, std::string_view bytes) const {
    const std::optional<fs::path> path = pathOf(name);
    std::error_code error;
    if (!path || (fs::exists(fs::symlink_status(*path, error)) && !isPlainFile(*path)))
        return false;
    const fs::path incoming = systemPath(path_) / incomingName;
    fs::remove(incoming, error);
    bool complete = false;
    try {
        FileSink sink(utf8Path(incoming));
        sink.write(bytes);
        sink.close();
        fs::rename(incoming, *path, error);
        complete = !error;
    } catch (const std::system_error&) {
        complete = false;
    }
    if (!complete)
        fs::remove(incoming, error);
    return complete;
}

bool DeviceFolder::remove(std::string_view name) const {
    std::error_code error;
    return find(name) && fs::remove(*pathOf(name), error);
}

} // namespace orvista
