#include "model/Change.h"

#include "model/Text.h"

#include <algorithm>
#include <string_view>

namespace orvista {

void addChanges(std::vector<Change>& changes, const Project& project, Item item,
                std::span<const std::string> texts) {
    const auto fields = fieldsOf(item.kind);
    for (std::size_t i = 0; i < fields.size(); ++i) {
        std::string before = textOf(project, item, fields[i]);
        if (before != texts[i])
            changes.push_back({item, &fields[i], std::move(before), texts[i]});
    }
}

std::vector<Change> changesBetween(const Project& before, const Project& after, Item item) {
    std::vector<Change> changes;
    for (const Field& field : fieldsOf(item.kind))
        if (!holdSame(before, after, item, field))
            changes.push_back({item, &field, textOf(before, item, field), textOf(after, item, field)});
    return changes;
}

std::vector<Change> storeTexts(Project& project, Item item, std::span<const std::string> texts) {
    std::vector<Change> changes;
    addChanges(changes, project, item, texts);
    applyChanges(project, changes);
    return changes;
}

std::vector<Item> itemsOf(std::span<const Change> changes) {
    std::vector<Item> items;
    for (const Change& change : changes)
        if (std::ranges::find(items, change.item) == items.end())
            items.push_back(change.item);
    return items;
}

Change trimmed(const Change& change) {
    if (change.field != &scriptField())
        return change;
    std::string_view before = change.before;
    std::string_view after = change.after;
    const std::size_t start = sameAtStart(before, after);
    before.remove_prefix(start);
    after.remove_prefix(start);
    const std::size_t end = sameAtEnd(before, after);
    before.remove_suffix(end);
    after.remove_suffix(end);
    return {change.item, change.field, std::string(before), std::string(after), change.at + start};
}

std::size_t bytesOf(const Change& change) {
    return sizeof change + change.before.size() + change.after.size();
}

void applyChanges(Project& project, std::span<const Change> changes) {
    for (const Change& change : changes)
        replaceText(project, change.item, *change.field, change.at, change.before, change.after);
}

void revertChanges(Project& project, std::span<const Change> changes) {
    for (const Change& change : changes)
        replaceText(project, change.item, *change.field, change.at, change.after, change.before);
}

} // namespace orvista
