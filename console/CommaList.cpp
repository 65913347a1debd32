#include "console/CommaList.h"

#include "model/Text.h"

#include <algorithm>

namespace orvista::console {

std::vector<std::string> betweenCommas(std::string_view text) {
    std::vector<std::string> parts;
    for (;;) {
        const std::size_t end = std::min(text.find(','), text.size());
        parts.emplace_back(trimBlanks(text.substr(0, end)));
        if (end == text.size())
            return parts;
        text.remove_prefix(end + 1);
    }
}

} // namespace orvista::console
