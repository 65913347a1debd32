#include "items/CopiedItems.h"

#include "items/CountedTexts.h"
#include "items/ProjectMessages.h"
#include "model/ItemKind.h"
#include "model/Numbers.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <set>
#include <stdexcept>

namespace orvista {

namespace {

constexpr std::string_view formWord = "orvista-items ";
constexpr int version = 1;
constexpr std::size_t mostItems = floatVariableCount + booleanVariableCount;
static_assert(mostItems >= messageCount);

/// The texts of an item that are its own, wherever it is put.
using Texts = std::vector<std::string>;

Texts textsOf(const std::string& script) {
    return {script};
}

Texts textsOf(const FloatVariable& variable) {
    return {variable.defaultValue, variable.width, variable.precision};
}

Texts textsOf(const BooleanVariable& variable) {
    return {variable.defaultValue, variable.onText, variable.offText};
}

Texts textsOf(const AddressMap& /*addresses*/) {
    throw std::out_of_range("the address map is no item of a table");
}

Texts textsOf(const ItemState& state) {
    return std::visit([](const auto& value) { return textsOf(value); }, state.value);
}

bool isMessage(std::string_view name) {
    return messagePosition(name).has_value();
}

/// Nothing where no item of a table has that name, letter by letter.
std::optional<ItemState> readItem(CountedTextReader& reader) {
    const std::string name(reader.text());
    const auto is = [&name](const ItemKind& kind) {
        const auto index = kind.indexOfName(name);
        return index && kind.name(*index) == name;
    };
    const auto text = [&reader] { return std::string(reader.text()); };
    if (is(regularMessages) || is(emergencyMessages))
        return ItemState{name, text()};
    // In braces the texts are read from left to right.
    if (is(floatVariables))
        return ItemState{name, FloatVariable{name, text(), text(), text()}};
    if (is(booleanVariables))
        return ItemState{name, BooleanVariable{name, text(), text(), text()}};
    return std::nullopt;
}

CopyFault faultOf(std::string_view bytes) {
    int number = 0;
    if (!bytes.starts_with(formWord))
        return CopyFault::NotItems;
    const std::string_view rest = bytes.substr(formWord.size());
    const auto read = std::from_chars(rest.data(), rest.data() + rest.size(), number);
    const bool isNumber =
        read.ec == std::errc() && read.ptr != rest.data() + rest.size() && *read.ptr == '\n';
    return isNumber && number > version ? CopyFault::NewerVersion : CopyFault::NotItems;
}

std::string copiesFirstLine() {
    return std::string(formWord) + decimalText(version) + "\n";
}

std::string counted(std::size_t count, std::string_view one, std::string_view several) {
    return decimalText(count) + " " + std::string(count == 1 ? one : several);
}

/// Why an item cannot be put there; empty where it can.
std::string refusalOf(const ItemState& item, const std::string& place) {
    if (isMessage(item.item) != isMessage(place))
        return isMessage(item.item) ? "Messages were copied; they cannot be pasted onto variables"
                                    : "Variables were copied; they cannot be pasted onto messages";
    const bool isFloat = floatVariables.indexOfName(place).has_value();
    if (!isMessage(place) && std::holds_alternative<FloatVariable>(item.value) != isFloat)
        return item.item + " cannot be pasted onto " + place + ": " +
               (isFloat ? "a Boolean has no width and precision" : "a float has no ON and OFF texts");
    return {};
}

} // namespace

CopiedItems copiedItems(const Project& project, const std::vector<std::string>& names) {
    return {project.ProjPath, itemStates(project, names)};
}

std::string copiedBytes(const CopiedItems& copied) {
    CountedTextWriter writer;
    writer.add(copied.folder);
    writer.add(copied.items.size());
    for (const ItemState& item : copied.items) {
        writer.add(item.item);
        for (const std::string& text : textsOf(item))
            writer.add(text);
    }
    return copiesFirstLine() + writer.bytes();
}

std::variant<CopiedItems, CopyFault> readCopied(std::string_view bytes) {
    const std::string line = copiesFirstLine();
    if (!bytes.starts_with(line))
        return faultOf(bytes);
    CountedTextReader reader(bytes.substr(line.size()));
    CopiedItems copied;
    copied.folder = reader.text();
    std::set<std::string> names;
    for (std::size_t left = reader.number(mostItems); left > 0 && !reader.hasFailed(); --left) {
        auto item = readItem(reader);
        if (!item || !names.insert(item->item).second)
            return CopyFault::NotItems;
        copied.items.push_back(std::move(*item));
    }
    const auto isOther = [&](const ItemState& item) {
        return isMessage(item.item) != isMessage(copied.items.front().item);
    };
    if (!reader.isDone() || copied.items.empty() || std::ranges::any_of(copied.items, isOther))
        return CopyFault::NotItems;
    return copied;
}

Pasted pasteOnto(const CopiedItems& copied, const std::vector<std::string>& selected,
                 const std::vector<std::string>& onwards) {
    const bool fillsSelection = copied.items.size() == 1;
    const std::vector<std::string>& places = fillsSelection ? selected : onwards;
    if (places.empty())
        return {{}, "Select the row to paste onto first"};
    if (copied.items.size() > places.size() && !fillsSelection)
        return {{},
                counted(copied.items.size(), "row was copied", "rows were copied") + "; there is room for " +
                    decimalText(places.size()) + " from " + places.front() + " on: nothing was pasted"};
    Pasted pasted;
    const std::size_t count = fillsSelection ? places.size() : copied.items.size();
    for (std::size_t i = 0; i < count; ++i) {
        const ItemState& item = copied.items[fillsSelection ? 0 : i];
        if (const std::string refusal = refusalOf(item, places[i]); !refusal.empty())
            return {{}, refusal + ". Nothing was pasted"};
        pasted.items.push_back({places[i], item.value});
    }
    return pasted;
}

std::vector<ItemState> clearedItems(const std::vector<std::string>& names) {
    return itemStates(Project(), names);
}

} // namespace orvista
