#include "compare/DifferenceRows.h"

#include "model/Lines.h"
#include "script/ScriptLines.h"

#include <algorithm>
#include <array>
#include <set>

namespace orvista {

namespace {

/// Lines removed and added at one place, those in each other's place beside each other.
class LineRows {
public:
    LineRows(Item item, std::vector<DifferenceRow>& rows) : item_(item), rows_(rows) {}

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
    Item item_;
    std::vector<DifferenceRow>& rows_;
    std::vector<const ComparedLine*> removed_;
    std::vector<const ComparedLine*> added_;
};

/// The lines of a message that are taken over, by their numbers.
struct TakenLines {
    std::set<std::size_t> removed;
    std::set<std::size_t> added;
};

TakenLines takenLines(std::span<const DifferenceRow> rows, Item item) {
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

/// A setting that differs, and what follows from it.
void takeSetting(const DifferenceRow& row, const Project& before, const Project& after,
                 std::vector<Change>& changes) {
    changes.push_back({row.item, row.field, row.before, row.after});
    if (row.item.kind != Kind::AddressMap || row.field->name != "AlertMessage")
        return;
    // The regular messages follow the emergency messages, as for whoever reads them.
    for (Change& change : changesBetween(before, after, row.item))
        if (!change.field->isRead)
            changes.push_back(std::move(change));
}

void takeLines(Item message, const Project& before, const Project& after, const TakenLines& taken,
               std::vector<Change>& changes) {
    addChanges(changes, before, message,
               std::array{mergedScript(scriptOf(before, message), scriptOf(after, message), taken)});
}

} // namespace

std::vector<DifferenceRow> differenceRows(std::span<const ItemDifference> differences) {
    std::vector<DifferenceRow> rows;
    for (const ItemDifference& difference : differences) {
        for (const Change& change : difference.fields)
            rows.push_back({change.item, change.field, 0, 0, change.before, change.after});
        LineRows lines(difference.item, rows);
        for (const ComparedLine& line : difference.lines)
            lines.take(line);
        lines.finish();
    }
    return rows;
}

std::vector<Change> takenOver(const Project& before, const Project& after,
                              std::span<const DifferenceRow> rows) {
    std::vector<Change> changes;
    std::set<Item> messages;
    for (const DifferenceRow& row : rows) {
        if (!row.isLine())
            takeSetting(row, before, after, changes);
        else if (messages.insert(row.item).second)
            takeLines(row.item, before, after, takenLines(rows, row.item), changes);
    }
    return changes;
}

std::vector<Change> fitted(std::vector<Change> changes, const Project& project) {
    for (Change& change : changes)
        change.before = textOf(project, change.item, *change.field);
    std::erase_if(changes, [](const Change& change) {
        return isMessage(change.item) ? equivalent(change.before, change.after)
                                      : change.before == change.after;
    });
    return changes;
}

} // namespace orvista
