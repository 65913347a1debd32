#include "compare/FileComparison.h"

#include "model/Files.h"

#include <algorithm>
#include <array>
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

} // namespace

std::optional<FileDifference> compareFiles(const std::string& before, const std::string& after) {
    Pieces left(before);
    Pieces right(after);
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
            return FileDifference{left.totalToEnd(), right.totalToEnd(), offset};
        }
    }
}

std::uint64_t sizeOfFile(const std::string& path) {
    return Pieces(path).totalToEnd();
}

} // namespace orvista
