#include "items/NotesJson.h"

#include "model/Numbers.h"
#include "model/Quotation.h"
#include "model/Text.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <map>
#include <stdexcept>
#include <unordered_map>
#include <utility>

namespace orvista {

namespace {

using Json = nlohmann::ordered_json;

constexpr int notesVersion = 1;

void noteBad(NotesReading& reading, std::string text) {
    if (reading.bad.size() < mostBadEntries)
        reading.bad.push_back(std::move(text));
    else
        ++reading.badNotListed;
}

std::string placeText(std::string_view bytes, std::size_t position) {
    const std::string_view before = bytes.substr(0, std::min(position == 0 ? 0 : position - 1, bytes.size()));
    const std::size_t lineStart = before.rfind('\n') + 1;
    return "line " + decimalText(std::ranges::count(before, '\n') + 1) + ", column " +
           decimalText(before.size() - lineStart + 1);
}

/// Builds the document. The library's own builder looks through all keys of an object for each of them, does
/// not tell of doubled ones, and has no limit for the depth.
class DocumentBuilder final : public nlohmann::json_sax<Json> {
public:
    DocumentBuilder(std::string_view bytes, NotesReading& reading) : bytes_(bytes), reading_(reading) {}

    Json& document() { return document_; }

    bool null() override { return add(nullptr); }
    bool boolean(bool value) override { return add(value); }
    bool number_integer(number_integer_t value) override { return add(value); }
    bool number_unsigned(number_unsigned_t value) override { return add(value); }
    bool number_float(number_float_t value, const string_t& /*digits*/) override { return add(value); }
    bool string(string_t& value) override { return add(std::move(value)); }
    bool binary(binary_t& /*value*/) override { return false; }
    bool start_object(std::size_t /*count*/) override { return open(Json::object()); }
    bool start_array(std::size_t /*count*/) override { return open(Json::array()); }
    bool end_object() override { return close(); }
    bool end_array() override { return close(); }

    bool key(string_t& name) override {
        Level& level = levels_.back();
        auto& members = level.container->get_ref<Json::object_t&>();
        const auto [known, isNew] = level.places.try_emplace(name, members.size());
        level.place = known->second;
        if (isNew)
            members.emplace_back(name, nullptr);
        else
            noteBad(reading_, quotation(name) + " stands there twice" +
                                  (level.name.empty() ? "" : " in " + quotation(level.name)) +
                                  "; the last one counts");
        level.key = std::move(name);
        return true;
    }

    bool parse_error(std::size_t position, const std::string& /*token*/,
                     const nlohmann::detail::exception& /*failure*/) override {
        reading_.fault = placeText(bytes_, position) + " is no JSON";
        return false;
    }

private:
    /// An array or object that is not at its end.
    struct Level {
        Json* container;
        std::string name;                                    ///< its key; empty for the outermost
        std::unordered_map<std::string, std::size_t> places; ///< of an object's keys
        std::string key;                                     ///< of the member that comes
        std::size_t place = 0;                               ///< the same among the members
    };

    bool add(Json value) {
        put(std::move(value));
        return true;
    }
    Json& put(Json value) {
        if (levels_.empty())
            return document_ = std::move(value);
        Json& container = *levels_.back().container;
        if (container.is_array())
            return container.get_ref<Json::array_t&>().emplace_back(std::move(value));
        auto& members = container.get_ref<Json::object_t&>();
        return (members.begin() + levels_.back().place)->second = std::move(value);
    }
    bool open(Json container) {
        if (levels_.size() == deepestNotes) {
            reading_.fault = "it is nested deeper than " + decimalText(deepestNotes);
            return false;
        }
        std::string name = levels_.empty() ? std::string() : levels_.back().key;
        levels_.push_back({&put(std::move(container)), std::move(name), {}, {}, 0});
        return true;
    }
    bool close() {
        levels_.pop_back();
        return true;
    }

    std::string_view bytes_;
    NotesReading& reading_;
    Json document_;
    std::vector<Level> levels_;
};

Json parsed(std::string_view bytes, NotesReading& reading) {
    DocumentBuilder builder(bytes, reading);
    Json::sax_parse(bytes, &builder);
    return std::move(builder.document());
}

/// The member of that key; null where there is none.
const Json* member(const Json& object, std::string_view key) {
    for (const auto& [name, value] : object.get_ref<const Json::object_t&>())
        if (name == key)
            return &value;
    return nullptr;
}

Json& memberToSet(Json& object, std::string_view key, Json missing) {
    auto& members = object.get_ref<Json::object_t&>();
    for (auto& [name, value] : members)
        if (name == key)
            return value;
    members.emplace_back(std::string(key), std::move(missing));
    return members.back().second;
}

/// An object, to which one that is missing is made, and anything else that stands there, too.
Json& objectToSet(Json& object, std::string_view key) {
    Json& value = memberToSet(object, key, Json::object());
    if (!value.is_object())
        value = Json::object();
    return value;
}

/// An empty text takes its key away.
void setText(Json& object, std::string_view key, const std::string& text) {
    if (!text.empty())
        memberToSet(object, key, nullptr) = text;
    else
        object.erase(std::string(key));
}

/// Reads the notes of a document that was parsed.
class NotesReader {
public:
    NotesReader(const Json& document, NotesReading& reading) : document_(document), reading_(reading) {}

    void run() {
        reading_.fault = formFault();
        if (!reading_.fault.empty())
            return;
        if (const Json* const display = member(document_, "display"))
            readDisplay(*display);
        if (const Json* const items = member(document_, "items"))
            readItems(*items);
        if (!reading_.fault.empty())
            reading_.notes = {};
    }

private:
    std::string formFault() const {
        if (!document_.is_object())
            return "it is no JSON object";
        const Json* const version = member(document_, "version");
        if (version == nullptr || *version != notesVersion)
            return "its \"version\" is not " + decimalText(notesVersion);
        for (const std::string_view part : {"display", "items"})
            if (const Json* const value = member(document_, part); value && !value->is_object())
                return "its " + quotation(part) + " is no object";
        return {};
    }

    void readDisplay(const Json& display) {
        if (const Json* const name = member(display, "name"))
            readDisplayName(*name);
        const Json* const columns = member(display, "columns");
        if (columns == nullptr)
            return;
        if (columns->is_number_integer() && *columns >= fewestNotedColumns && *columns <= mostNotedColumns)
            reading_.notes.columns = columns->get<int>();
        else
            noteBad(reading_, "the display's columns are no whole number from " +
                                  decimalText(fewestNotedColumns) + " to " + decimalText(mostNotedColumns));
    }

    void readDisplayName(const Json& name) {
        if (!name.is_string())
            return noteBad(reading_, "the display's name is no text");
        const auto& text = name.get_ref<const std::string&>();
        if (characterCount(text) > longestDisplayName)
            reading_.fault =
                "the display's name is longer than " + decimalText(longestDisplayName) + " characters";
        else if (const std::string fault = displayNameFault(text); !fault.empty())
            noteBad(reading_, "the display's name " + fault);
        else
            reading_.notes.displayName = text;
    }

    void readItems(const Json& items) {
        for (const auto& [key, value] : items.get_ref<const Json::object_t&>()) {
            const auto item = itemNamed(key);
            if (!item || item->kind == Kind::AddressMap)
                noteBad(reading_, quotation(key) + " is no variable or message");
            else if (!value.is_object())
                noteBad(reading_, key + " is no object");
            else
                readItem(*item, value);
        }
    }

    void readItem(Item item, const Json& entry) {
        if (reading_.notes.items().contains(item)) {
            noteBad(reading_, nameOf(item) + " stands there twice; the last one counts");
            reading_.notes.set(item, ItemNote());
        }
        ItemNote note;
        for (const NoteField& field : noteFields)
            if (const Json* const value = member(entry, field.name))
                readText(item, field, *value, note);
        reading_.notes.set(item, std::move(note));
    }

    void readText(Item item, const NoteField& field, const Json& value, ItemNote& note) {
        const auto where = [&] { return nameOf(item) + ", " + std::string(field.name) + ": "; };
        if (!value.is_string())
            return noteBad(reading_, where() + "it is no text");
        const auto& text = value.get_ref<const std::string&>();
        if (characterCount(text) > field.longest) {
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
        return "is the label of " + nameOf(first->second) + " already";
    }

    const Json& document_;
    NotesReading& reading_;
    std::map<std::string, Item> labels_; ///< in capitals
};

/// The item's entry: the last one, which counts, where it stands there in several spellings.
Json& entryToSet(Json& items, Item item) {
    Json* found = nullptr;
    for (auto& [key, value] : items.get_ref<Json::object_t&>())
        if (itemNamed(key) == item)
            found = &value;
    if (found == nullptr)
        return objectToSet(items, nameOf(item));
    if (!found->is_object())
        *found = Json::object();
    return *found;
}

void removeIfEmpty(Json& items, const Json& entry) {
    auto& members = items.get_ref<Json::object_t&>();
    if (entry.empty())
        members.erase(std::ranges::find_if(members, [&](const auto& one) { return &one.second == &entry; }));
}

void setItem(Json& document, Item item, const ItemNote& before, const ItemNote& after) {
    Json& items = objectToSet(document, "items");
    Json& entry = entryToSet(items, item);
    for (const NoteField& field : noteFields)
        if (before.*field.text != after.*field.text)
            setText(entry, field.name, after.*field.text);
    removeIfEmpty(items, entry);
}

void setDisplay(Json& document, const ProjectNotes& before, const ProjectNotes& after) {
    Json& display = objectToSet(document, "display");
    if (before.displayName != after.displayName)
        setText(display, "name", after.displayName);
    if (before.columns != after.columns) {
        setText(display, "columns", {});
        if (after.columns)
            memberToSet(display, "columns", nullptr) = *after.columns;
    }
}

void setNotes(Json& document, const ProjectNotes& before, const ProjectNotes& after) {
    if (before.displayName != after.displayName || before.columns != after.columns)
        setDisplay(document, before, after);
    for (const Item item : allItems())
        if (before.of(item) != after.of(item))
            setItem(document, item, before.of(item), after.of(item));
}

NotesReading readDocument(const Json& document) {
    NotesReading reading;
    NotesReader(document, reading).run();
    return reading;
}

std::string sizeFault() {
    return "it is longer than " + decimalText(mostNotesBytes >> 20) + " MB";
}

} // namespace

NotesReading readNotes(std::string_view bytes) {
    NotesReading reading;
    if (bytes.size() > mostNotesBytes)
        reading.fault = sizeFault();
    const Json document = reading.fault.empty() ? parsed(bytes, reading) : Json();
    if (reading.fault.empty())
        NotesReader(document, reading).run();
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
    NotesReading again;
    Json document = former.empty() ? Json{{"version", notesVersion}} : parsed(former, again);
    // Where a bad entry comes to be read, it gives way in the next round.
    for (std::size_t round = 0; reading.notes != notes && round < allItems().size(); ++round) {
        setNotes(document, reading.notes, notes);
        reading = readDocument(document);
    }
    std::string bytes = document.dump(2) + "\n";
    if (reading.notes != notes)
        throw std::invalid_argument(reading.fault.empty() ? "an entry cannot be noted" : reading.fault);
    if (bytes.size() > mostNotesBytes)
        throw std::invalid_argument(sizeFault());
    return bytes;
}

} // namespace orvista
