#include "items/Master.h"

#include "model/Item.h"
#include "model/Numbers.h"
#include "model/Quotation.h"
#include "model/Text.h"
#include "model/Windows1252.h"

#include <algorithm>
#include <array>
#include <functional>
#include <map>
#include <optional>
#include <set>

namespace orvista {

namespace {

using PlaceKind = TextPlace::Kind;

/// The list's own columns, which are nobody's values.
constexpr std::array<std::string_view, 5> ownColumns{"name", "address", "port", "project", "columns"};

struct ValueFault {
    PlaceFault fault;
    std::string text;
};

std::string singleQuotation(std::string_view utf8) {
    std::string text = quotation(utf8);
    text.front() = text.back() = '\'';
    return text;
}

/// A display's value in device bytes, whatever the place.
struct JudgedValue {
    std::string bytes;
    std::optional<ValueFault> fault;
};

bool hasPicture(char character) {
    const char32_t codePoint = windows1252CodePoint(static_cast<unsigned char>(character));
    return codePoint >= U' ' && codePoint != U'\x7F' && !(codePoint >= U'\x80' && codePoint < U'\xA0');
}

std::optional<std::string> characterFault(std::string_view utf8, const std::optional<std::string>& bytes) {
    if (!bytes)
        return singleQuotation(foreignCharacter(utf8)) + " is not a character of the display";
    if (bytes->find('"') != std::string::npos)
        return singleQuotation(utf8) + " holds a quote";
    if (bytes->find_first_of("\r\n") != std::string::npos)
        return singleQuotation(utf8) + " holds a line end";
    if (!std::ranges::all_of(*bytes, hasPicture))
        return singleQuotation(utf8) + " holds a control character";
    return std::nullopt;
}

JudgedValue judged(const std::string& name, const ListedValues& values) {
    const std::string* const utf8 = values.find(name);
    if (utf8 == nullptr) {
        const bool isOwn = std::ranges::find(ownColumns, name) != ownColumns.end();
        return {{},
                ValueFault{PlaceFault::Unknown, isOwn ? "the list's column '" + name + "' is not a value"
                                                      : "the list has no column '" + name + "'"}};
    }
    auto bytes = windows1252FromUtf8(*utf8);
    if (auto text = characterFault(*utf8, bytes))
        return {{}, ValueFault{PlaceFault::Value, std::move(*text)}};
    if (bytes->empty())
        return {{}, ValueFault{PlaceFault::Width, "the value of '" + name + "' is empty"}};
    return {std::move(*bytes), std::nullopt};
}

/// What a place becomes.
struct Filling {
    std::string text;
    std::optional<ValueFault> fault;
};

Filling fillingOf(const TextPlace& place, std::string_view value) {
    const bool isBitmap = place.kind == PlaceKind::Bitmap;
    if (isBitmap)
        value = trimBlanks(value);
    if (value.empty())
        return {{}, ValueFault{PlaceFault::Width, "the value of '" + place.name + "' is blank"}};
    const std::size_t most = place.width > 0 ? place.width : longestFreeValue;
    if (value.size() > most)
        return {{},
                ValueFault{PlaceFault::Width,
                           singleQuotation(utf8FromWindows1252(value)) + " is " + decimalText(value.size()) +
                               (place.width > 0 ? " wide, its place " : " wide, at most ") +
                               decimalText(most)}};
    return {placed(value, place.width, place.alignment), std::nullopt};
}

/// What a place shows where it has no value. A bitmap's stays as it is written.
std::string nameShown(const TextPlace& place, std::string_view text) {
    return place.kind == PlaceKind::Bitmap ? std::string(text.substr(place.at, place.length))
                                           : placed(place.name, place.width, place.alignment);
}

/// \param fill what each place that is no brace becomes
template <typename Fill>
std::string withPlacesFilled(std::string_view text, const std::vector<TextPlace>& places, Fill&& fill) {
    std::string filled;
    filled.reserve(text.size() + places.size() * widestPlace);
    std::size_t done = 0;
    for (const TextPlace& place : places) {
        filled.append(text, done, place.at - done);
        filled.append(place.kind == PlaceKind::Brace ? "{" : fill(place));
        done = place.at + place.length;
    }
    return filled.append(text, done);
}

std::string withNames(std::string_view text, const std::vector<TextPlace>& places) {
    return withPlacesFilled(text, places, [&](const TextPlace& place) { return nameShown(place, text); });
}

/// Fills places with the values of one display, each of which is judged once.
class DisplayFilling {
public:
    DisplayFilling(const FleetDisplay& display, Expansion& expansion)
        : display_(display), expansion_(expansion) {}

    std::string filled(Item item, std::string_view text, const std::vector<TextPlace>& places) {
        return withPlacesFilled(text, places, [&](const TextPlace& place) {
            const JudgedValue& value = valueOf(place.name);
            Filling filling = value.fault ? Filling{{}, value.fault} : fillingOf(place, value.bytes);
            if (!filling.fault)
                return std::move(filling.text);
            tell(item, place, std::move(*filling.fault));
            return nameShown(place, text);
        });
    }

private:
    const JudgedValue& valueOf(const std::string& name) {
        const auto known = values_.find(name);
        return known != values_.end() ? known->second
                                      : values_.emplace(name, judged(name, display_.values)).first->second;
    }

    void tell(Item item, const TextPlace& place, ValueFault fault) {
        if (expansion_.errors.size() < mostPlaceErrors)
            expansion_.errors.push_back({{item, place.line, place.column, place.line > 0 ? place.length : 0},
                                         fault.fault,
                                         display_.name,
                                         std::move(fault.text)});
        else
            ++expansion_.errorsNotListed;
    }

    const FleetDisplay& display_;
    Expansion& expansion_;
    std::map<std::string, JudgedValue> values_;
};

/// How many bytes the expansion has for a place of a script; a bitmap's go on to the end of the line.
std::size_t expandedLength(const TextPlace& place) {
    switch (place.kind) {
    case PlaceKind::Value:
        return place.width;
    case PlaceKind::Brace:
        return 1;
    case PlaceKind::Bitmap:
        break;
    }
    return std::string::npos;
}

/// The column of the master for one of the expansion.
/// \param isEnd of the byte after a stretch, which is after a place where the stretch ends within it
std::size_t columnInMaster(const std::vector<TextPlace>& places, std::size_t line, std::size_t column,
                           bool isEnd) {
    std::size_t moved = column; // as if all places before it were written out
    for (const TextPlace& place : places) {
        if (place.line != line)
            continue;
        if (moved < place.column + (isEnd ? 1 : 0))
            break;
        const std::size_t length = expandedLength(place);
        if (length == std::string::npos || moved - place.column < length + (isEnd ? 1 : 0))
            return isEnd ? place.column + place.length : place.column;
        moved = moved - length + place.length;
    }
    return moved;
}

} // namespace

Master::Master(Project project) : project_(std::move(project)) {
    const auto add = [this](Item item, std::string BooleanVariable::*member, std::vector<TextPlace> places) {
        if (!places.empty())
            texts_.push_back({item, member, std::move(places)});
    };
    for (std::size_t i = 0; i < project_.CoilVar.size(); ++i)
        for (const auto member : {&BooleanVariable::onText, &BooleanVariable::offText})
            add({Kind::Boolean, i}, member, placesInSwitchText(project_.CoilVar[i].*member));
    for (const Item message : allMessages())
        add(message, nullptr, placesInScript(scriptOf(project_, message)));
}

std::string& Master::textOf(Project& project, const Text& text) const {
    return text.member != nullptr ? project.CoilVar[text.item.index].*text.member
                                  : scriptOf(project, text.item);
}

Expansion Master::expand(const FleetDisplay& display) const {
    Expansion expansion{project_, {}, 0};
    expansion.project.IP = windows1252FromUtf8(display.address.host).value_or(std::string());
    DisplayFilling filling(display, expansion);
    for (const Text& text : texts_) {
        std::string& target = textOf(expansion.project, text);
        target = filling.filled(text.item, target, text.places);
    }
    return expansion;
}

Project Master::itself() const {
    Project project = project_;
    for (const Text& text : texts_) {
        std::string& target = textOf(project, text);
        target = withNames(target, text.places);
    }
    return project;
}

std::vector<std::string> Master::names() const {
    std::vector<std::string> names;
    std::set<std::string> known;
    for (const Text& text : texts_)
        for (const TextPlace& place : text.places)
            if (place.kind != PlaceKind::Brace && known.insert(place.name).second)
                names.push_back(place.name);
    return names;
}

std::vector<Item> Master::items() const {
    std::vector<Item> items;
    for (const Text& text : texts_)
        if (items.empty() || items.back() != text.item) // both texts of a variable
            items.push_back(text.item);
    return items;
}

Place Master::inMaster(const Place& expanded) const {
    const auto text = std::ranges::find_if(
        texts_, [&](const Text& one) { return one.member == nullptr && one.item == expanded.item; });
    if (!expanded.file.empty() || expanded.column == 0 || text == texts_.end())
        return expanded;
    Place place = expanded;
    place.column = columnInMaster(text->places, expanded.line, expanded.column, false);
    if (expanded.length > 0)
        place.length = columnInMaster(text->places, expanded.line, expanded.column + expanded.length, true) -
                       place.column;
    return place;
}

Expansion expand(const Project& project, const FleetDisplay& display) {
    return Master(project).expand(display);
}

std::string hiddenMasterFault(const std::string& path, const Project& project, bool mayHideMaster) {
    const auto places = mayHideMaster ? Master(project).names() : std::vector<std::string>();
    return places.empty() ? std::string()
                          : path + " may be a master: its messages have places such as {" + places.front() +
                                "}, and its notes cannot be read; mend them first";
}

ProjectNotes expandedNotes(ProjectNotes notes, const FleetDisplay& display) {
    notes.masterList.reset();
    if (display.columns)
        notes.columns = display.columns;
    if (notes.displayName.empty())
        notes.displayName = display.name;
    return notes;
}

std::pair<std::string, std::vector<PlaceError>> expandScript(Item message, std::string_view script,
                                                             const FleetDisplay& display) {
    Expansion expansion;
    std::string filled = DisplayFilling(display, expansion).filled(message, script, placesInScript(script));
    return {std::move(filled), std::move(expansion.errors)};
}

std::string scriptWithNames(std::string_view script) {
    return withNames(script, placesInScript(script));
}

} // namespace orvista
