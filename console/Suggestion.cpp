#include "console/Suggestion.h"

#include "model/WordDistance.h"

#include <algorithm>
#include <cstddef>

namespace orvista::console {

std::string closestWord(std::string_view typed, std::span<const std::string> words) {
    constexpr std::size_t longest = 40; // no word is; a path pasted by mistake may be
    if (typed.size() > longest)
        return {};
    std::size_t least = std::max<std::size_t>(1, typed.size() / 3) + 1;
    std::string closest;
    for (const std::string& word : words)
        if (const std::size_t steps = wordDistance(typed, word); steps < least) {
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
