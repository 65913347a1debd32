#include "compare/FileComparison.h"

#include "model/BitmapFiles.h"
#include "model/Files.h"
#include "model/PathRules.h"
#include "model/Text.h"

#include <algorithm>
#include <array>
#include <map>
#include <string_view>

namespace orvista {

namespace {

/// A file that is read piece by piece.
class Pieces {
public:
    explicit Pieces(const std::string& path) : path_(path), source_(opened(path)) {}

    /// What is left of the present piece, or the next one; empty at the end.
    std::string_view piece() {
        if (position_ == size_) {
            position_ = 0;
            size_ = read();
        }
        return std::string_view(buffer_.data(), size_).substr(position_);
    }
    void advance(std::size_t count) {
        position_ += count;
        total_ += count;
    }
    std::uint64_t total() const { return total_; }
    std::uint64_t totalToEnd() {
        while (!piece().empty())
            advance(piece().size());
        return total_;
    }

private:
    static FileSource opened(const std::string& path) {
        try {
            return FileSource(path);
        } catch (const OpenFailure& failure) {
            throw std::system_error(failure.code(), path);
        }
    }

    std::size_t read() {
        try {
            return source_.read(buffer_.data(), buffer_.size());
        } catch (const ReadFailure& failure) {
            throw std::system_error(failure.code(), path_);
        }
    }

    std::string path_;
    FileSource source_;
    std::array<char, 16384> buffer_{};
    std::size_t position_ = 0;
    std::size_t size_ = 0;
    std::uint64_t total_ = 0;
};

using FilesByName = std::map<std::string, const NamedFile*>;

FilesByName byName(const std::vector<NamedFile>& files) {
    FilesByName found;
    for (const NamedFile& file : files)
        found[lowerAscii(file.name)] = &file;
    return found;
}

} // namespace

std::optional<FileDifference> compareBytes(const NamedFile& before, const NamedFile& after) {
    Pieces left(before.path);
    Pieces right(after.path);
    while (true) {
        const std::string_view one = left.piece();
        const std::string_view other = right.piece();
        if (one.empty() && other.empty())
            return std::nullopt;
        const std::size_t length = std::min(one.size(), other.size());
        const auto end = one.begin() + static_cast<std::ptrdiff_t>(length);
        const auto same =
            static_cast<std::size_t>(std::mismatch(one.begin(), end, other.begin()).first - one.begin());
        left.advance(same);
        right.advance(same);
        if (same < length || length == 0) {
            const std::uint64_t offset = left.total();
            return FileDifference{before.name, left.totalToEnd(), right.totalToEnd(), offset};
        }
    }
}

std::uint64_t sizeOfFile(const std::string& path) {
    return Pieces(path).totalToEnd();
}

std::vector<NamedFile> filesIn(const std::string& folder, const std::vector<std::string>& names) {
    const PathRules paths = PathRules::native();
    std::vector<NamedFile> files;
    files.reserve(names.size());
    for (const std::string& name : names)
        files.push_back({name, paths.join(folder, name)});
    return files;
}

std::vector<NamedFile> bitmapsIn(const std::string& folder) {
    return filesIn(folder, bitmapsOfFolder(folder));
}

std::vector<FileDifference> compareFiles(const std::vector<NamedFile>& before,
                                         const std::vector<NamedFile>& after) {
    const FilesByName left = byName(before);
    const FilesByName right = byName(after);
    std::map<std::string, FileDifference> differences;
    for (const auto& [key, file] : left) {
        const auto other = right.find(key);
        if (other == right.end())
            differences[key] = {file->name, sizeOfFile(file->path), std::nullopt, std::nullopt};
        else if (const auto difference = compareBytes(*file, *other->second))
            differences[key] = *difference;
    }
    for (const auto& [key, file] : right) {
        if (!left.contains(key))
            differences[key] = {file->name, std::nullopt, sizeOfFile(file->path), std::nullopt};
    }
    std::vector<FileDifference> list;
    list.reserve(differences.size());
    for (auto& [key, difference] : differences)
        list.push_back(std::move(difference));
    return list;
}

} // namespace orvista
