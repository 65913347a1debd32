#include "sheets/NameSheet.h"

#include "model/Numbers.h"
#include "model/Quotation.h"
#include "model/Text.h"

#include <map>
#include <optional>
#include <utility>

namespace orvista {

namespace {

constexpr std::array<std::string_view, 4> nameColumns{"name", "label", "unit", "comment"};
constexpr std::size_t itemColumn = 0;
constexpr std::size_t firstNoteColumn = 1; ///< the others are noteFields in their order
constexpr std::size_t labelColumn = 1;

class NamesReader {
public:
    NamesReader(std::string_view bytes, const ProjectNotes& notes)
        : before_(notes), sheet_(bytes, nameColumns, result_.errors) {
        result_.notes = notes;
    }

    NameImport run() {
        if (sheet_.hasHead() && sheet_.needs(itemColumn))
            while (sheet_.next())
                takeRow();
        for (const auto& [row, item] : rows_)
            checkLabel(row, item);
        if (!result_.errors.none())
            result_.notes = before_;
        return std::move(result_);
    }

private:
    void takeRow() {
        const std::string name(trimBlanksAndTabs(sheet_.cell(itemColumn)));
        const auto item = itemWritten(name);
        if (!item || item->kind == Kind::AddressMap)
            return sheet_.fail(itemColumn, quotation(name) + " is not a variable or message");
        if (const auto row = rowOfItem(*item))
            return sheet_.fail(itemColumn, name + " stands in row " + decimalText(*row) + " already");
        rows_.emplace(sheet_.row(), *item);
        items_.emplace(*item, sheet_.row());
        for (std::size_t i = 0; i < noteFields.size(); ++i)
            takeCell(firstNoteColumn + i, *item, noteFields.at(i));
    }

    void takeCell(std::size_t column, Item item, const NoteField& field) {
        if (!sheet_.has(column))
            return;
        const std::string text(trimBlanksAndTabs(sheet_.cell(column)));
        if (const std::string fault = noteFault(field, text); !fault.empty())
            return sheet_.fail(column, quotation(text) + " " + fault);
        result_.notes.set(item, field, text);
    }

    std::optional<std::size_t> rowOfItem(Item item) const {
        const auto found = items_.find(item);
        return found == items_.end() ? std::nullopt : std::optional(found->second);
    }

    /// Labels are compared when all rows are known: two rows may change theirs for one another.
    void checkLabel(std::size_t row, Item item) {
        const std::string& label = result_.notes.of(item).label;
        if (label.empty())
            return;
        for (const auto& [other, note] : result_.notes.items()) {
            const auto otherRow = rowOfItem(other);
            const bool isEarlier = !otherRow || *otherRow < row;
            if (other != item && isEarlier && equalsIgnoringCase(note.label, label))
                return result_.errors.add(row, nameColumns[labelColumn],
                                          quotation(label) + " " + takenLabelFault(other));
        }
    }

    const ProjectNotes& before_;
    NameImport result_;
    SheetReader sheet_;
    std::map<std::size_t, Item> rows_;
    std::map<Item, std::size_t> items_;
};

} // namespace

std::string nameSheet(const ProjectNotes& notes) {
    std::string csv(utf8Mark);
    appendRecord(csv, std::vector<std::string>(nameColumns.begin(), nameColumns.end()));
    for (const Item item : allItems()) {
        if (item.kind == Kind::AddressMap)
            continue;
        std::vector<std::string> cells{nameOf(item)};
        for (const NoteField& field : noteFields)
            cells.push_back(notes.of(item).*field.text);
        appendRecord(csv, cells);
    }
    return csv;
}

std::vector<NoteChange> noteChanges(const ProjectNotes& before, const ProjectNotes& after) {
    std::vector<NoteChange> changes;
    for (const Item item : allItems())
        for (const NoteField& field : noteFields)
            if (const std::string& old = before.of(item).*field.text, &now = after.of(item).*field.text;
                old != now)
                changes.push_back({item, &field, old, now});
    return changes;
}

NameImport importNames(std::string_view bytes, const ProjectNotes& notes) {
    return NamesReader(bytes, notes).run();
}

} // namespace orvista
