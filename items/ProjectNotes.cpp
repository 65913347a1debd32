#include "items/ProjectNotes.h"

#include "items/Labels.h"
#include "model/Numbers.h"
#include "model/Quotation.h"
#include "model/Text.h"
#include "model/Utf8.h"

#include <algorithm>
#include <utility>

namespace orvista {

const std::array<NoteField, 3> noteFields{{{"label", &ItemNote::label, longestLabel},
                                           {"unit", &ItemNote::unit, 16},
                                           {"comment", &ItemNote::comment, 200}}};

namespace {

bool isControl(char character) {
    return static_cast<unsigned char>(character) < ' ' || character == '\x7F';
}

/// ASCII that can be noted as it stands: most texts are, and a project may have hundreds.
bool isPlainLine(std::string_view text) {
    return std::ranges::all_of(text, [](char character) { return character >= ' ' && character < '\x7F'; });
}

} // namespace

const ItemNote& ProjectNotes::of(Item item) const {
    static const ItemNote none;
    const auto found = items_.find(item);
    return found == items_.end() ? none : found->second;
}

void ProjectNotes::set(Item item, const NoteField& field, std::string text) {
    ItemNote note = of(item);
    note.*field.text = std::move(text);
    set(item, std::move(note));
}

void ProjectNotes::set(Item item, ItemNote note) {
    if (note.label.empty() && note.unit.empty() && note.comment.empty())
        items_.erase(item);
    else
        items_.insert_or_assign(items_.end(), item, std::move(note)); // most come in order
}

std::optional<Item> ProjectNotes::labelled(std::string_view label) const {
    for (const auto& [item, note] : items_)
        if (!note.label.empty() && equalsIgnoringCase(note.label, label))
            return item;
    return std::nullopt;
}

const ProjectNotes& noNotes() {
    static const ProjectNotes none;
    return none;
}

std::optional<Item> itemCalled(std::string_view text, const ProjectNotes& notes) {
    const auto item = itemWritten(text);
    return item ? item : notes.labelled(text);
}

std::size_t characterCount(std::string_view utf8) {
    return static_cast<std::size_t>(std::ranges::count_if(
        utf8, [](char unit) { return (static_cast<unsigned char>(unit) & 0xC0) != 0x80; }));
}

std::string lineFault(std::string_view text, std::size_t longest) {
    if (text.size() <= longest && isPlainLine(text))
        return {};
    if (characterCount(text) > longest)
        return "is longer than " + decimalText(longest) + " characters";
    if (!isUtf8(text))
        return "is not UTF-8";
    return std::ranges::any_of(text, &isControl) ? "holds a tab, a line end or another control character"
                                                 : "";
}

std::string noteFault(const NoteField& field, std::string_view text) {
    return field.text == &ItemNote::label ? labelFault(text) : lineFault(text, field.longest);
}

std::string displayNameFault(std::string_view name) {
    return lineFault(name, longestDisplayName);
}

std::string listPathFault(std::string_view path) {
    return path.empty() ? "is empty" : lineFault(path, longestListPath);
}

std::string takenLabelFault(Item owner) {
    return "is the label of " + nameOf(owner) + " already";
}

std::vector<NoteFault> noteFaults(const ProjectNotes& notes) {
    std::vector<NoteFault> faults;
    std::map<std::string, Item> taken;
    for (const auto& [item, note] : notes.items()) {
        for (const NoteField& field : noteFields)
            if (const std::string fault = noteFault(field, note.*field.text); !fault.empty())
                faults.push_back({item, &field, quotation(note.*field.text) + " " + fault});
        if (note.label.empty())
            continue;
        const auto [first, isNew] = taken.try_emplace(upperAscii(note.label), item);
        if (!isNew)
            faults.push_back(
                {item, noteFields.data(), quotation(note.label) + " " + takenLabelFault(first->second)});
    }
    return faults;
}

ProjectNotes withDifferences(ProjectNotes notes, const ProjectNotes& before, const ProjectNotes& after) {
    if (before.displayName != after.displayName)
        notes.displayName = after.displayName;
    if (before.columns != after.columns)
        notes.columns = after.columns;
    if (before.masterList != after.masterList)
        notes.masterList = after.masterList;
    for (const Item item : allItems())
        for (const NoteField& field : noteFields)
            if (before.of(item).*field.text != after.of(item).*field.text)
                notes.set(item, field, after.of(item).*field.text);
    return notes;
}

} // namespace orvista
