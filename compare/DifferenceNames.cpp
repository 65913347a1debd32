#include "compare/DifferenceNames.h"

#include "model/Item.h"
#include "model/Numbers.h"

#include <algorithm>

namespace orvista {

std::vector<std::string> differingNames(const ContentsComparison& comparison) {
    std::vector<std::string> names;
    for (const ItemDifference& difference : comparison.items)
        names.push_back(nameOf(difference.item));
    for (const HeldAnswer& file : comparison.unexplainedFiles())
        names.push_back(file.name);
    for (const HeldAnswer& bitmap : comparison.bitmaps)
        if (bitmap.counts && !bitmap.isWell())
            names.push_back(bitmap.name);
    return names;
}

std::string differingText(const ContentsComparison& comparison) {
    constexpr std::size_t most = 2;
    const std::vector<std::string> names = differingNames(comparison);
    // One more is named rather than counted.
    const std::size_t told = names.size() <= most + 1 ? names.size() : most;
    std::string text;
    for (std::size_t i = 0; i < told; ++i)
        text.append(i == 0 ? "" : ", ").append(names[i]);
    return told < names.size() ? text + " and " + decimalText(names.size() - told) + " more" : text;
}

} // namespace orvista
