#include "compare/LineMatching.h"

#include <algorithm>
#include <map>
#include <utility>

namespace orvista {

namespace {

/// The greedy search for the shortest way from one text to the other, by the number d of lines removed and
/// added. A place is x lines into the first text and y into the second; x - y is its diagonal.
class ShortestWay {
public:
    /// \param before, after lines as numbers, equal for equal lines
    ShortestWay(std::vector<int> before, std::vector<int> after)
        : before_(std::move(before)), after_(std::move(after)) {}

    /// As matchLines gives them.
    std::vector<std::optional<std::size_t>> pairs() {
        std::vector<std::optional<std::size_t>> paired(after_.size());
        if (!search())
            return paired;
        auto x = width();
        auto y = height();
        for (int d = static_cast<int>(reached_.size()) - 1; d >= 0; --d) {
            const bool isDown = comesFromAbove(d, x - y);
            const int cameFrom = isDown ? x - y + 1 : x - y - 1;
            const int startX = d == 0 ? 0 : at(d - 1, cameFrom) + (isDown ? 0 : 1);
            while (x > startX)
                paired[static_cast<std::size_t>(--y)] = static_cast<std::size_t>(--x);
            if (d > 0) {
                x = at(d - 1, cameFrom);
                y = x - cameFrom;
            }
        }
        return paired;
    }

private:
    /// Of steps along equal lines and of places kept; a million lines of little in common end here.
    static constexpr std::size_t mostWork = 4'000'000;

    int width() const { return static_cast<int>(before_.size()); }
    int height() const { return static_cast<int>(after_.size()); }

    /// How far the ways with d changes got on that diagonal, from -d to d.
    int at(int d, int diagonal) const {
        const int place = diagonal + d;
        return reached_[static_cast<std::size_t>(d)][static_cast<std::size_t>(place)];
    }

    /// Whether the last change of the farthest way was a line added, and not one removed.
    bool comesFromAbove(int d, int diagonal) const {
        return diagonal == -d || (diagonal != d && at(d - 1, diagonal - 1) < at(d - 1, diagonal + 1));
    }

    bool search() {
        for (int d = 0; d <= width() + height(); ++d) {
            reached_.emplace_back(2 * static_cast<std::size_t>(d) + 1, 0);
            for (int diagonal = -d; diagonal <= d; diagonal += 2) {
                const int x = farthest(d, diagonal);
                const int place = diagonal + d;
                reached_.back()[static_cast<std::size_t>(place)] = x;
                if (x >= width() && x - diagonal >= height())
                    return true;
                if (work_ > mostWork)
                    return false;
            }
        }
        return false;
    }

    int farthest(int d, int diagonal) {
        int x = 0;
        if (d > 0)
            x = comesFromAbove(d, diagonal) ? at(d - 1, diagonal + 1) : at(d - 1, diagonal - 1) + 1;
        for (work_ += 2; x < width() && x - diagonal < height() && isSame(x, x - diagonal); ++x)
            ++work_;
        return x;
    }

    bool isSame(int x, int y) const {
        return before_[static_cast<std::size_t>(x)] == after_[static_cast<std::size_t>(y)];
    }

    std::vector<int> before_;
    std::vector<int> after_;
    std::vector<std::vector<int>> reached_; ///< by d
    std::size_t work_ = 0;
};

/// Numbers that are equal for equal lines.
class LineNumbers {
public:
    std::vector<int> of(std::span<const std::string_view> lines) {
        std::vector<int> numbers;
        for (const std::string_view line : lines)
            numbers.push_back(known_.try_emplace(line, static_cast<int>(known_.size())).first->second);
        return numbers;
    }

private:
    std::map<std::string_view, int> known_;
};

} // namespace

std::vector<std::optional<std::size_t>> matchLines(std::span<const std::string_view> before,
                                                   std::span<const std::string_view> after) {
    const auto shorter = std::min(before.size(), after.size());
    std::size_t head = 0;
    while (head < shorter && before[head] == after[head])
        ++head;
    std::size_t tail = 0;
    while (tail < shorter - head && before[before.size() - 1 - tail] == after[after.size() - 1 - tail])
        ++tail;
    LineNumbers numbers;
    std::vector<int> left = numbers.of(before.subspan(head, before.size() - head - tail));
    std::vector<int> right = numbers.of(after.subspan(head, after.size() - head - tail));

    std::vector<std::optional<std::size_t>> partners;
    for (std::size_t i = 0; i < head; ++i)
        partners.emplace_back(i);
    for (const auto& partner : ShortestWay(std::move(left), std::move(right)).pairs())
        partners.push_back(partner ? std::optional(head + *partner) : std::nullopt);
    for (std::size_t i = before.size() - tail; i < before.size(); ++i)
        partners.emplace_back(i);
    return partners;
}

} // namespace orvista
