#include "link/ftp/DownloadStaging.h"

#include "model/Files.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <system_error>
#include <utility>

namespace orvista {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view innerPrefix = "download";
constexpr std::string_view innerSuffix = ".tmp";
/// What a file that is about to be replaced is kept as, after its number.
constexpr std::string_view keptSuffix = ".old";

bool isNumber(std::string_view text) {
    constexpr std::size_t mostDigits = 9;
    return !text.empty() && text.size() <= mostDigits &&
           std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
}

/// True for a folder that only a program of ours can have made: the name, and what is in it.
bool isLeftover(const fs::path& path) {
    const std::string name = utf8Path(path.filename());
    constexpr std::size_t withoutNumber = innerPrefix.size() + innerSuffix.size();
    if (name.size() <= withoutNumber || !name.starts_with(innerPrefix) || !name.ends_with(innerSuffix) ||
        !isNumber(name.substr(innerPrefix.size(), name.size() - withoutNumber)))
        return false;
    std::error_code error;
    if (!fs::is_directory(fs::symlink_status(path, error)))
        return false;
    for (fs::directory_iterator entry(path, error), end; !error && entry != end; entry.increment(error)) {
        std::string inside = utf8Path(entry->path().filename());
        if (inside.ends_with(keptSuffix))
            inside.resize(inside.size() - keptSuffix.size());
        if (!isNumber(inside) || entry->is_directory(error))
            return false;
    }
    return !error;
}

void removeLeftovers(const fs::path& folder) {
    std::vector<fs::path> leftovers;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        if (isLeftover(entry->path()))
            leftovers.push_back(entry->path());
    }
    for (const fs::path& leftover : leftovers)
        fs::remove_all(leftover, error);
}

/// True for errors that speak of the name and not of the disk or its state.
bool refusesName(const std::error_code& error) {
    static constexpr std::array errors{std::errc::filename_too_long, std::errc::invalid_argument,
                                       std::errc::illegal_byte_sequence};
    return std::ranges::any_of(errors, [&](std::errc known) { return error == known; });
}

} // namespace

DownloadStaging::DownloadStaging(std::string folder, const PathRules& paths) : paths_(paths) {
    removeLeftovers(systemPath(folder));
    // A leftover that cannot be removed, and folders of others, are passed over.
    constexpr int attempts = 1000;
    for (int number = 0; number < attempts; ++number) {
        inner_ =
            paths_.join(folder, std::string(innerPrefix) + std::to_string(number) + std::string(innerSuffix));
        if (fs::create_directory(systemPath(inner_)))
            return;
    }
    throw std::system_error(std::make_error_code(std::errc::file_exists), inner_);
}

DownloadStaging::~DownloadStaging() {
    std::error_code ignored;
    fs::remove_all(systemPath(inner_), ignored);
}

bool DownloadStaging::canAppear(const std::string& finalPath) {
    const fs::path path = systemPath(finalPath);
#ifdef _WIN32
    // Windows answers a path that is too long as if its folder were missing. 260 counts the NUL at its end.
    constexpr std::size_t longestPath = 260 - 1;
    if (path.native().size() > longestPath)
        return false;
#endif
    std::error_code error;
    static_cast<void>(fs::symlink_status(path, error));
    return !refusesName(error);
}

const std::string& DownloadStaging::pathFor(const std::string& finalPath) {
    std::error_code unknown;
    if (fs::is_directory(fs::symlink_status(systemPath(finalPath), unknown)))
        throw std::system_error(std::make_error_code(std::errc::is_a_directory), finalPath);
    files_.push_back({paths_.join(inner_, std::to_string(files_.size())), finalPath});
    return files_.back().stagedPath;
}

void DownloadStaging::complete() {
    try {
        for (std::size_t index = 0; index < files_.size(); ++index)
            replace(index);
    } catch (const std::system_error&) {
        takeBack();
        throw;
    }
}

void DownloadStaging::replace(std::size_t index) {
    if (!canAppear(files_[index].finalPath))
        return;
    const Before before = keepWhatIsThere(index);
    std::error_code error;
    fs::rename(systemPath(files_[index].stagedPath), systemPath(files_[index].finalPath), error);
    if (!error)
        replaced_.push_back({index, before});
    else if (!refusesName(error))
        throw std::system_error(error, files_[index].finalPath);
}

fs::path DownloadStaging::keptPath(std::size_t index) const {
    return systemPath(files_[index].stagedPath + std::string(keptSuffix));
}

/// The file itself stays where it is until the new one takes its place: there is always one under the name.
DownloadStaging::Before DownloadStaging::keepWhatIsThere(std::size_t index) const {
    const fs::path final = systemPath(files_[index].finalPath);
    std::error_code error;
    if (!fs::exists(fs::symlink_status(final, error)))
        return Before::Nothing;
    fs::create_hard_link(final, keptPath(index), error);
    // Not every disk knows several names for one file.
    if (error)
        fs::copy(final, keptPath(index), fs::copy_options::copy_symlinks);
    return Before::AFile;
}

void DownloadStaging::takeBack() noexcept {
    // Last to first; clang 14 cannot read GCC's std::views::reverse.
    for (auto replaced = replaced_.rbegin(); replaced != replaced_.rend(); ++replaced) {
        const auto& [index, before] = *replaced;
        std::error_code ignored;
        const fs::path final = systemPath(files_[index].finalPath);
        if (before == Before::AFile)
            fs::rename(keptPath(index), final, ignored);
        else
            fs::remove(final, ignored);
    }
    replaced_.clear();
}

} // namespace orvista
