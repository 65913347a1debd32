#include "model/WordDistance.h"

#include <algorithm>
#include <vector>

namespace orvista {

std::size_t wordDistance(std::string_view one, std::string_view other) {
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

} // namespace orvista
