#include "console/Suggestion.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace orvista::console {

namespace {

/// How many letters of the one have to be changed, put in, left out or swapped to get the other.
std::size_t distance(std::string_view one, std::string_view other) {
    std::vector<std::vector<std::size_t>> steps(one.size() + 1, std::vector<std::size_t>(other.size() + 1));
    for (std::size_t i = 0; i <= one.size(); ++i)
        for (std::size_t j = 0; j <= other.size(); ++j) {
            if (i == 0 || j == 0) {
                steps[i][j] = i + j;
                continue;
            }
            const std::size_t change = one[i - 1] == other[j - 1] ? 0 : 1;
            steps[i][j] = std::min({steps[i - 1][j] + 1, steps[i][j - 1] + 1, steps[i - 1][j - 1] + change});
            if (i > 1 && j > 1 && one[i - 1] == other[j - 2] && one[i - 2] == other[j - 1])
                steps[i][j] = std::min(steps[i][j], steps[i - 2][j - 2] + 1);
        }
    return steps[one.size()][other.size()];
}

} // namespace

std::string closestWord(std::string_view typed, std::span<const std::string> words) {
    constexpr std::size_t longest = 40; // no word is; a path pasted by mistake may be
    if (typed.size() > longest)
        return {};
    std::size_t least = std::max<std::size_t>(1, typed.size() / 3) + 1;
    std::string closest;
    for (const std::string& word : words)
        if (const std::size_t steps = distance(typed, word); steps < least) {
            least = steps;
            closest = word;
        }
    return closest;
}

std::string withSuggestion(const std::string& problem, std::string_view typed,
                           std::span<const std::string> words, const std::string& page) {
    const std::string closest = closestWord(typed, words);
    return problem + (closest.empty() ? "; see " + page : "; did you mean " + closest + "?");
}

} // namespace orvista::console
