#include "compare/ProjectComparison.h"

#include "script/ScriptLines.h"

namespace orvista {

std::vector<ItemDifference> compareItems(const Project& before, const Project& after) {
    std::vector<ItemDifference> items;
    for (const Item item : allItems()) {
        if (isMessage(item)) {
            const std::string& left = scriptOf(before, item);
            const std::string& right = scriptOf(after, item);
            if (!equivalent(left, right))
                items.push_back({item, {}, comparedLines(left, right)});
            continue;
        }
        std::vector<Change> fields = changesBetween(before, after, item);
        std::erase_if(fields, [](const Change& change) { return !change.field->isRead; });
        if (!fields.empty())
            items.push_back({item, std::move(fields), {}});
    }
    return items;
}

} // namespace orvista
