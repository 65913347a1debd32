#include "items/NotesJson.h"

#include "model/JsonReader.h"
#include "model/JsonText.h"
#include "model/Numbers.h"
#include "model/Quotation.h"
#include "model/Text.h"

#include <algorithm>
#include <stdexcept>
#include <unordered_map>
#include <utility>

namespace orvista {

namespace {

constexpr int notesVersion = 1;
constexpr const char* lastCounts = "; the last one counts";

void noteBad(NotesReading& reading, std::string text) {
    if (reading.bad.size() < mostBadEntries)
        reading.bad.push_back(std::move(text));
    else
        ++reading.badNotListed;
}

/// An object, to which one that is missing is made, and anything else that stands there, too.
JsonValue& objectToSet(JsonValue& object, std::string_view key) {
    JsonValue& value = object.memberToSet(key);
    if (value.object() == nullptr)
        value = JsonValue::Object();
    return value;
}

/// An empty text takes its key away.
void setText(JsonValue& object, std::string_view key, const std::string& text) {
    if (!text.empty())
        object.memberToSet(key) = text;
    else
        std::erase_if(*object.object(), [&](const JsonMember& member) { return member.key == key; });
}

/// Reads the notes of a document that was parsed.
class NotesReader {
public:
    NotesReader(const JsonValue& document, NotesReading& reading) : document_(document), reading_(reading) {}

    void run() {
        reading_.fault = formFault();
        if (!reading_.fault.empty())
            return;
        if (const JsonValue* const display = document_.member("display"))
            readDisplay(*display);
        if (const JsonValue* const master = document_.member("master"))
            readMaster(*master);
        if (const JsonValue* const items = document_.member("items"))
            readItems(*items);
        if (!reading_.fault.empty())
            reading_.notes = {};
    }

private:
    std::string formFault() const {
        if (!document_.object())
            return "it is not a JSON object";
        const JsonValue* const version = document_.member("version");
        if (version == nullptr || version->number() != notesVersion)
            return "its \"version\" is not " + decimalText(notesVersion);
        for (const std::string_view part : {"display", "items"})
            if (const JsonValue* const value = document_.member(part); value && !value->object())
                return "its " + quotation(part) + " is not an object";
        return {};
    }

    void readDisplay(const JsonValue& display) {
        if (const JsonValue* const name = display.member("name"))
            readDisplayName(*name);
        const JsonValue* const columns = display.member("columns");
        if (columns == nullptr)
            return;
        if (const auto width = columns->whole(fewestNotedColumns, mostNotedColumns))
            reading_.notes.columns = static_cast<int>(*width);
        else
            noteBad(reading_, "the display's columns are not a whole number from " +
                                  decimalText(fewestNotedColumns) + " to " + decimalText(mostNotedColumns));
    }

    void readDisplayName(const JsonValue& name) {
        if (!name.text())
            return noteBad(reading_, "the display's name is not a text");
        const std::string& text = *name.text();
        if (characterCount(text) > longestDisplayName)
            reading_.fault =
                "the display's name is longer than " + decimalText(longestDisplayName) + " characters";
        else if (const std::string fault = displayNameFault(text); !fault.empty())
            noteBad(reading_, "the display's name " + fault);
        else
            reading_.notes.displayName = text;
    }

    void readMaster(const JsonValue& master) {
        const JsonValue* const list = master.member("list");
        if (list == nullptr || !list->text())
            return noteBad(reading_, "the master has no \"list\" that is a text");
        if (const std::string fault = listPathFault(*list->text()); !fault.empty())
            noteBad(reading_, "the master's list " + fault);
        else
            reading_.notes.masterList = *list->text();
    }

    void readItems(const JsonValue& items) {
        labels_.reserve(items.object()->size());
        for (const auto& [key, value] : *items.object()) {
            const auto item = itemNamed(key);
            if (!item || item->kind == Kind::AddressMap)
                noteBad(reading_, quotation(key) + " is not a variable or message");
            else if (!value.object())
                noteBad(reading_, key + " is not an object");
            else
                readItem(*item, value);
        }
    }

    void readItem(Item item, const JsonValue& entry) {
        if (reading_.notes.items().contains(item)) {
            noteBad(reading_, nameOf(item) + " stands there twice" + lastCounts);
            reading_.notes.set(item, ItemNote());
        }
        ItemNote note;
        for (const NoteField& field : noteFields)
            if (const JsonValue* const value = entry.member(field.name))
                readText(item, field, *value, note);
        reading_.notes.set(item, std::move(note));
    }

    void readText(Item item, const NoteField& field, const JsonValue& value, ItemNote& note) {
        const auto where = [&] { return nameOf(item) + ", " + std::string(field.name) + ": "; };
        if (!value.text())
            return noteBad(reading_, where() + "it is not a text");
        const std::string& text = *value.text();
        if (text.size() > field.longest && characterCount(text) > field.longest) {
            reading_.fault =
                where() + quotation(text) + " is longer than " + decimalText(field.longest) + " characters";
            return;
        }
        std::string fault = noteFault(field, text);
        if (fault.empty() && field.text == &ItemNote::label)
            fault = takenFault(item, text);
        if (!fault.empty())
            noteBad(reading_, where() + quotation(text) + " " + fault);
        else
            note.*field.text = text;
    }

    /// Takes a label for the item, unless another one has it.
    std::string takenFault(Item item, const std::string& label) {
        if (label.empty())
            return {};
        const auto [first, isNew] = labels_.try_emplace(upperAscii(label), item);
        if (isNew || first->second == item)
            return {};
        if (!equalsIgnoringCase(reading_.notes.of(first->second).label, label)) { // read again without it
            first->second = item;
            return {};
        }
        return takenLabelFault(first->second);
    }

    const JsonValue& document_;
    NotesReading& reading_;
    std::unordered_map<std::string, Item> labels_; ///< in capitals
};

/// The item's entry: the last one, which counts, where it stands there in several spellings.
JsonValue& entryToSet(JsonValue& items, Item item) {
    JsonValue* found = nullptr;
    for (auto& [key, value] : *items.object())
        if (itemNamed(key) == item)
            found = &value;
    if (found == nullptr)
        return objectToSet(items, nameOf(item));
    if (!found->object())
        *found = JsonValue::Object();
    return *found;
}

void removeIfEmpty(JsonValue& items, const JsonValue& entry) {
    if (entry.object()->empty())
        std::erase_if(*items.object(), [&](const JsonMember& one) { return &one.value == &entry; });
}

void setItem(JsonValue& document, Item item, const ItemNote& before, const ItemNote& after) {
    JsonValue& items = objectToSet(document, "items");
    JsonValue& entry = entryToSet(items, item);
    for (const NoteField& field : noteFields)
        if (before.*field.text != after.*field.text)
            setText(entry, field.name, after.*field.text);
    removeIfEmpty(items, entry);
}

void setDisplay(JsonValue& document, const ProjectNotes& before, const ProjectNotes& after) {
    JsonValue& display = objectToSet(document, "display");
    if (before.displayName != after.displayName)
        setText(display, "name", after.displayName);
    if (before.columns != after.columns) {
        setText(display, "columns", {});
        if (after.columns)
            display.memberToSet("columns") = *after.columns;
    }
}

/// A project that is no master has nothing noted of one.
void setMaster(JsonValue& document, const std::optional<std::string>& list) {
    if (list)
        setText(objectToSet(document, "master"), "list", *list);
    else
        setText(document, "master", {});
}

void setNotes(JsonValue& document, const ProjectNotes& before, const ProjectNotes& after) {
    if (before.displayName != after.displayName || before.columns != after.columns)
        setDisplay(document, before, after);
    if (before.masterList != after.masterList)
        setMaster(document, after.masterList);
    for (const Item item : allItems())
        if (before.of(item) != after.of(item))
            setItem(document, item, before.of(item), after.of(item));
}

NotesReading readDocument(const JsonValue& document) {
    NotesReading reading;
    NotesReader(document, reading).run();
    return reading;
}

JsonValue emptyNotes() {
    return JsonValue::Object{{"version", notesVersion}};
}

} // namespace

std::string notesSizeFault() {
    return "it is longer than " + decimalText(mostNotesBytes >> 20) + " MB";
}

NotesReading readNotes(std::string_view bytes) {
    NotesReading reading;
    if (bytes.size() > mostNotesBytes) {
        reading.fault = notesSizeFault();
        reading.mayHideMaster = true;
        return reading;
    }
    const JsonReading json = readJson(bytes);
    reading.fault = json.fault;
    for (const std::string& doubled : json.doubledKeys)
        noteBad(reading, doubled + lastCounts);
    if (reading.fault.empty())
        NotesReader(json.value, reading).run();
    const bool isWhole = reading.fault.empty() && reading.bad.empty();
    reading.mayHideMaster =
        !isWhole && !reading.notes.masterList && bytes.find("\"master\"") != std::string_view::npos;
    if (!reading.fault.empty())
        reading.bad.clear();
    return reading;
}

std::string notesBytes(std::string_view former, const ProjectNotes& notes) {
    NotesReading reading = former.empty() ? NotesReading() : readNotes(former);
    if (!reading.fault.empty())
        throw std::invalid_argument(reading.fault);
    if (reading.notes == notes)
        return std::string(former);
    JsonValue document = former.empty() ? emptyNotes() : readJson(former).value;
    // Where a bad entry comes to be read, it gives way in the next round.
    for (std::size_t round = 0; reading.notes != notes && round < allItems().size(); ++round) {
        setNotes(document, reading.notes, notes);
        reading = readDocument(document);
    }
    std::string bytes = jsonText(document);
    if (reading.notes != notes)
        throw std::invalid_argument(reading.fault.empty() ? "an entry cannot be noted" : reading.fault);
    if (bytes.size() > mostNotesBytes)
        throw std::invalid_argument(notesSizeFault());
    return bytes;
}

} // namespace orvista
