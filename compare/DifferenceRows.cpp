#include "compare/DifferenceRows.h"

#include "items/ProjectMessages.h"
#include "model/Lines.h"
#include "script/ScriptLines.h"
#include "sheets/SheetChange.h"

#include <algorithm>
#include <set>

namespace orvista {

namespace {

/// Lines removed and added at one place, those in each other's place beside each other.
class LineRows {
public:
    LineRows(std::string item, std::vector<DifferenceRow>& rows) : item_(std::move(item)), rows_(rows) {}

    void take(const ComparedLine& line) {
        switch (line.kind) {
        case ComparedLine::Kind::Same:
            finish();
            break;
        case ComparedLine::Kind::Removed:
            removed_.push_back(&line);
            break;
        case ComparedLine::Kind::Added:
            added_.push_back(&line);
            break;
        }
    }
    void finish() {
        for (std::size_t i = 0; i < std::max(removed_.size(), added_.size()); ++i) {
            DifferenceRow& row = rows_.emplace_back();
            row.item = item_;
            if (i < removed_.size()) {
                row.lineBefore = removed_[i]->numberBefore;
                row.before = removed_[i]->text;
            }
            if (i < added_.size()) {
                row.lineAfter = added_[i]->numberAfter;
                row.after = added_[i]->text;
            }
        }
        removed_.clear();
        added_.clear();
    }

private:
    std::string item_;
    std::vector<DifferenceRow>& rows_;
    std::vector<const ComparedLine*> removed_;
    std::vector<const ComparedLine*> added_;
};

/// The lines of a message that are taken over, by their numbers.
struct TakenLines {
    std::set<std::size_t> removed;
    std::set<std::size_t> added;
};

TakenLines takenLines(std::span<const DifferenceRow> rows, const std::string& item) {
    TakenLines lines;
    for (const DifferenceRow& row : rows) {
        if (row.item == item) {
            lines.removed.insert(row.lineBefore);
            lines.added.insert(row.lineAfter);
        }
    }
    return lines;
}

/// The first script with the lines that are taken over from the second; the second one itself where that is
/// all that differs.
std::string mergedScript(const std::string& before, const std::string& after, const TakenLines& taken) {
    std::string script;
    for (const ComparedLine& line : comparedLines(before, after)) {
        const bool isTaken = line.kind == ComparedLine::Kind::Removed
                                 ? taken.removed.contains(line.numberBefore)
                                 : taken.added.contains(line.numberAfter);
        if (line.kind == ComparedLine::Kind::Same || isTaken == (line.kind == ComparedLine::Kind::Added))
            script.append(script.empty() ? "" : lineEnd).append(line.text);
    }
    return equivalent(script, after) ? after : script;
}

void takeLines(Project& project, const Project& from, const std::string& item, const TakenLines& taken) {
    const auto position = messagePosition(item);
    if (!position)
        return;
    std::string& script = messageScript(project, *position);
    script = mergedScript(script, messageScript(from, *position), taken);
}

void takeAddress(Project& project, const Project& from, std::string_view field) {
    for (const AddressField& address : addressFields) {
        if (address.name == field)
            project.*address.start = from.*address.start;
    }
    // No file of the display names this start: it follows the emergency messages, as for whoever reads them.
    if (field == emergencyAddressField.name)
        project.RegularMessage = from.RegularMessage;
}

} // namespace

std::vector<DifferenceRow> differenceRows(std::span<const ItemDifference> differences) {
    std::vector<DifferenceRow> rows;
    for (const ItemDifference& difference : differences) {
        for (const FieldDifference& field : difference.fields)
            rows.push_back({difference.item, field.field, 0, 0, field.before, field.after});
        LineRows lines(difference.item, rows);
        for (const ComparedLine& line : difference.lines)
            lines.take(line);
        lines.finish();
    }
    return rows;
}

std::vector<ItemState> takenOver(const Project& before, const Project& after,
                                 std::span<const DifferenceRow> rows) {
    Project merged = before;
    std::vector<std::string> items;
    for (const DifferenceRow& row : rows) {
        const bool isNew = std::ranges::find(items, row.item) == items.end();
        if (isNew)
            items.push_back(row.item);
        if (row.item == addressMapName)
            takeAddress(merged, after, row.field);
        else if (!row.isLine())
            applyChanges(merged, {{row.item, row.field, row.before, row.after}});
        else if (isNew)
            takeLines(merged, after, row.item, takenLines(rows, row.item));
    }
    return itemStates(merged, items);
}

} // namespace orvista
