#include "model/StagedFiles.h"

#include "model/Files.h"
#include "model/SystemFile.h"
#include "model/SystemPath.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <system_error>

namespace orvista {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view stagingPrefix = "download";
constexpr std::string_view stagingSuffix = ".tmp";
/// What stood under a file's name is kept as the file's number and this.
constexpr std::string_view keptSuffix = ".old";
/// A copy that is not yet whole.
constexpr std::string_view partSuffix = ".part";
/// Each name ends in NUL, and the list in another: one that was not written to its end shows.
constexpr std::string_view listName = "names";

/// True for errors that speak of the name and not of the disk or its state.
bool refusesName(const std::error_code& error) {
    static constexpr std::array errors{std::errc::filename_too_long, std::errc::invalid_argument,
                                       std::errc::illegal_byte_sequence};
    return std::ranges::any_of(errors, [&](std::errc known) { return error == known; });
}

bool isThere(const fs::path& path) {
    return kindOf(path) != fs::file_type::not_found;
}

/// Gives a file a second name, or a copy where the disk knows one name for a file only.
void keepAs(const fs::path& kept, const fs::path& file) {
    std::error_code error;
    fs::create_hard_link(file, kept, error);
    if (!error)
        return;
    fs::path part = kept;
    part += partSuffix;
    fs::remove(part);
    fs::copy(file, part, fs::copy_options::copy_symlinks);
    fs::rename(part, kept);
}

/// Some files are the old ones and some the new ones.
class HalfDone : public std::system_error {
public:
    using std::system_error::system_error;
};

/// Goes on from each state in which it may have been left.
class Appearance {
public:
    Appearance(fs::path staging, const std::vector<std::string>& names)
        : staging_(std::move(staging)), names_(names) {}

    /// \throws std::system_error
    void expectAllWaiting() const {
        for (std::size_t index = 0; index < names_.size(); ++index)
            if (!isThere(stagedPath(index)))
                throw std::system_error(std::make_error_code(std::errc::no_such_file_or_directory),
                                        names_[index]);
    }
    /// \throws std::system_error after all was taken back; HalfDone where that failed, too
    void complete() const {
        try {
            for (std::size_t index = 0; index < names_.size(); ++index)
                replace(index);
        } catch (const std::system_error& failure) {
            if (!takeAllBack())
                throw HalfDone(failure.code());
            throw;
        }
    }

private:
    fs::path stagedPath(std::size_t index) const { return staging_ / std::to_string(index); }
    fs::path keptPath(std::size_t index) const {
        return staging_ / (std::to_string(index) + std::string(keptSuffix));
    }
    fs::path finalPath(std::size_t index) const { return staging_.parent_path() / systemPath(names_[index]); }

    /// What is there stays until the new file takes its place: there is always one under the name.
    void replace(std::size_t index) const {
        const fs::path final = finalPath(index);
        if (!canAppear(final) || !isThere(stagedPath(index)))
            return;
        const fs::file_type before = kindOf(final);
        if (before == fs::file_type::directory)
            throw std::system_error(std::make_error_code(std::errc::is_a_directory), names_[index]);
        if (before != fs::file_type::not_found && !isThere(keptPath(index)))
            keepAs(keptPath(index), final);
        std::error_code error;
        fs::rename(stagedPath(index), final, error);
        if (error && !refusesName(error))
            throw std::system_error(error, names_[index]);
    }

    /// Last to first: a name may come twice.
    bool takeAllBack() const {
        bool all = true;
        for (std::size_t index = names_.size(); index-- > 0;) {
            try {
                takeBack(index);
            } catch (const std::system_error&) {
                all = false;
            }
        }
        return all;
    }

    /// The new file waits again before the old one is in its place, or it would be missing for who goes on.
    void takeBack(std::size_t index) const {
        const fs::path final = finalPath(index);
        const bool hasAppeared = !isThere(stagedPath(index)) && isThere(final);
        if (!isThere(keptPath(index))) {
            if (hasAppeared)
                fs::rename(final, stagedPath(index));
            return;
        }
        if (hasAppeared)
            keepAs(stagedPath(index), final);
        fs::rename(keptPath(index), final);
    }

    fs::path staging_;
    const std::vector<std::string>& names_;
};

/// Held open while the files appear, so that nobody else goes on with them meanwhile.
class List {
public:
    List(const fs::path& staging, SystemFile::Mode mode) : path_(staging / listName), file_(path_, mode) {
        isOurs_ = file_.lock();
    }

    bool isOurs() const { return isOurs_; }
    const fs::path& path() const { return path_; }
    void write(const std::vector<std::string>& names) {
        std::string bytes;
        for (const std::string& name : names)
            bytes.append(name).push_back('\0');
        bytes.push_back('\0');
        file_.write(bytes);
    }
    void remove() {
        file_.close(); // not every system removes a file that is open
        fs::remove(path_);
    }

private:
    fs::path path_;
    SystemFile file_;
    bool isOurs_ = false;
};

/// The list is gone once all files are the old ones or the new ones.
/// \throws std::system_error
void completeAndForget(const Appearance& appearance, List& list) {
    try {
        appearance.complete();
    } catch (const HalfDone&) {
        throw;
    } catch (const std::system_error&) {
        list.remove();
        throw;
    }
    list.remove();
}

bool isEntryName(std::string_view name) {
    return !name.empty() && name != "." && name != ".." && name.find_first_of("/\\:") == name.npos;
}

/// Nothing where the list was not written to its end, and where it is none of ours.
std::optional<std::vector<std::string>> namesOf(const fs::path& list) {
    FileSource source(utf8Path(list));
    std::string bytes;
    std::array<char, 4096> part{};
    while (const std::size_t count = source.read(part.data(), part.size()))
        bytes.append(part.data(), count);
    std::vector<std::string> names;
    for (std::size_t start = 0, end = 0; (end = bytes.find('\0', start)) != bytes.npos; start = end + 1) {
        if (end == start)
            return names;
        names.push_back(bytes.substr(start, end - start));
        if (!isEntryName(names.back()))
            return std::nullopt;
    }
    return std::nullopt;
}

bool isEntryNumber(std::string_view text) {
    constexpr std::size_t mostDigits = 9;
    return !text.empty() && text.size() <= mostDigits &&
           std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
}

bool isStagingName(std::string_view name) {
    constexpr std::size_t withoutNumber = stagingPrefix.size() + stagingSuffix.size();
    return name.size() > withoutNumber && name.starts_with(stagingPrefix) && name.ends_with(stagingSuffix) &&
           isEntryNumber(name.substr(stagingPrefix.size(), name.size() - withoutNumber));
}

bool isInnerName(std::string_view name) {
    for (const std::string_view suffix : {partSuffix, keptSuffix})
        if (name.ends_with(suffix))
            name.remove_suffix(suffix.size());
    return name == listName || isEntryNumber(name);
}

/// True for a folder that only a program of ours can have made: the name, and what is in it.
bool isLeftover(const fs::path& path) {
    std::error_code error;
    if (!isStagingName(utf8Path(path.filename())) || !fs::is_directory(fs::symlink_status(path, error)))
        return false;
    for (fs::directory_iterator entry(path, error), end; !error && entry != end; entry.increment(error)) {
        if (!isInnerName(utf8Path(entry->path().filename())) || entry->is_directory(error))
            return false;
    }
    return !error;
}

std::vector<fs::path> leftoversIn(const fs::path& folder) {
    std::vector<fs::path> leftovers;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        if (isLeftover(entry->path()))
            leftovers.push_back(entry->path());
    }
    return leftovers;
}

/// What became of a folder that somebody left.
enum class Left { Alone, BeforeAnyAppeared, Finished };

Left finish(const fs::path& staging) {
    if (!isThere(staging / listName))
        return Left::BeforeAnyAppeared;
    List list(staging, SystemFile::Mode::Existing);
    if (!list.isOurs())
        return Left::Alone;
    const auto names = namesOf(list.path());
    if (!names)
        return Left::BeforeAnyAppeared;
    try {
        completeAndForget(Appearance(staging, *names), list);
    } catch (const HalfDone&) {
        return Left::Alone;
    } catch (const std::system_error&) {
        return Left::Finished; // by taking all back
    }
    return Left::Finished;
}

void finishAndRemove(const std::string& folder, bool alsoUnbegun) noexcept {
    try {
        for (const fs::path& leftover : leftoversIn(systemPath(folder))) {
            const Left left = finish(leftover);
            std::error_code ignored;
            if (left == Left::Finished || (left == Left::BeforeAnyAppeared && alsoUnbegun))
                fs::remove_all(leftover, ignored);
        }
    } catch (const std::exception&) {
        // What cannot be looked at now may be the next time.
    }
}

} // namespace

std::string stagingName(int number) {
    return std::string(stagingPrefix) + std::to_string(number) + std::string(stagingSuffix);
}

bool canAppear(const fs::path& path) {
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

void letAppear(const fs::path& staging, const std::vector<std::string>& names) {
    const Appearance appearance(staging, names);
    appearance.expectAllWaiting();
    List list(staging, SystemFile::Mode::New);
    try {
        list.write(names);
    } catch (const WriteFailure&) {
        list.remove();
        throw;
    }
    completeAndForget(appearance, list);
}

void removeStaging(const fs::path& staging) noexcept {
    std::error_code error;
    if (!fs::exists(fs::symlink_status(staging / listName, error)))
        fs::remove_all(staging, error);
}

void finishStaging(const std::string& folder) noexcept {
    finishAndRemove(folder, false);
}

void clearStaging(const std::string& folder) noexcept {
    finishAndRemove(folder, true);
}

} // namespace orvista
