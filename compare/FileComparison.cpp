#include "compare/FileComparison.h"

#include "model/Files.h"
#include "model/Text.h"

#include <algorithm>
#include <array>
#include <memory>
#include <string_view>

namespace orvista {

namespace {

/// A file that is read piece by piece.
class Pieces {
public:
    explicit Pieces(const ComparedFile& file) : path_(file.path), rest_(file.bytes.value_or("")) {
        if (!file.bytes)
            source_ = opened(path_);
    }

    /// What is left of the present piece, or the next one; empty at the end.
    std::string_view piece() {
        if (rest_.empty() && source_)
            rest_ = read();
        return rest_;
    }
    void advance(std::size_t count) {
        rest_.remove_prefix(count);
        total_ += count;
    }
    std::uint64_t total() const { return total_; }
    std::uint64_t totalToEnd() {
        while (!piece().empty())
            advance(piece().size());
        return total_;
    }

private:
    static std::unique_ptr<FileSource> opened(const std::string& path) {
        try {
            return std::make_unique<FileSource>(path);
        } catch (const OpenFailure& failure) {
            throw std::system_error(failure.code(), path);
        }
    }

    std::string_view read() {
        try {
            return {buffer_.data(), source_->read(buffer_.data(), buffer_.size())};
        } catch (const ReadFailure& failure) {
            throw std::system_error(failure.code(), path_);
        }
    }

    std::string path_;
    std::string_view rest_; ///< of the present piece
    std::unique_ptr<FileSource> source_;
    std::array<char, 16384> buffer_{};
    std::uint64_t total_ = 0;
};

} // namespace

std::optional<FileDifference> compareFiles(const ComparedFile& before, const ComparedFile& after) {
    Pieces left(before);
    Pieces right(after);
    while (true) {
        const std::string_view one = left.piece();
        const std::string_view other = right.piece();
        if (one.empty() && other.empty())
            return std::nullopt;
        const std::size_t length = std::min(one.size(), other.size());
        const std::size_t same = sameAtStart(one, other);
        left.advance(same);
        right.advance(same);
        if (same < length || length == 0) {
            const std::uint64_t offset = left.total();
            return FileDifference{left.totalToEnd(), right.totalToEnd(), offset};
        }
    }
}

std::uint64_t sizeOfFile(const ComparedFile& file) {
    return Pieces(file).totalToEnd();
}

} // namespace orvista
