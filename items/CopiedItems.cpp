#include "items/CopiedItems.h"

#include "items/CountedTexts.h"
#include "model/Fields.h"
#include "model/Numbers.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <set>

namespace orvista {

namespace {

constexpr std::string_view formWord = "orvista-items ";
constexpr int version = 1;
constexpr std::size_t mostItems = floatVariableCount + booleanVariableCount;
static_assert(mostItems >= messageCount);

/// Nothing where no item of a table has that name, letter by letter.
std::optional<CopiedItem> readItem(CountedTextReader& reader) {
    const std::string_view name = reader.text();
    const auto item = itemNamed(name);
    if (!item || item->kind == Kind::AddressMap || nameOf(*item) != name)
        return std::nullopt;
    CopiedItem copied{*item, {}};
    for (std::size_t left = fieldsOf(item->kind).size(); left > 0; --left)
        copied.texts.emplace_back(reader.text());
    return copied;
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
std::string refusalOf(Item item, Item place) {
    if (isMessage(item) != isMessage(place))
        return isMessage(item) ? "Messages were copied; they cannot be pasted onto variables"
                               : "Variables were copied; they cannot be pasted onto messages";
    if (isVariable(place) && item.kind != place.kind)
        return nameOf(item) + " cannot be pasted onto " + nameOf(place) + ": " +
               (place.kind == Kind::Float ? "a Boolean has no width and precision"
                                          : "a float has no ON and OFF texts");
    return {};
}

} // namespace

CopiedItems copiedItems(const Project& project, std::span<const Item> items) {
    CopiedItems copied{project.ProjPath, {}};
    for (const Item item : items)
        copied.items.push_back({item, textsOf(project, item)});
    return copied;
}

std::string copiedBytes(const CopiedItems& copied) {
    CountedTextWriter writer;
    writer.add(copied.folder);
    writer.add(copied.items.size());
    for (const CopiedItem& item : copied.items) {
        writer.add(nameOf(item.item));
        for (const std::string& text : item.texts)
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
    std::set<Item> known;
    for (std::size_t left = reader.number(mostItems); left > 0 && !reader.hasFailed(); --left) {
        auto item = readItem(reader);
        if (!item || !known.insert(item->item).second)
            return CopyFault::NotItems;
        copied.items.push_back(std::move(*item));
    }
    const auto isOther = [&](const CopiedItem& item) {
        return isMessage(item.item) != isMessage(copied.items.front().item);
    };
    if (!reader.isDone() || copied.items.empty() || std::ranges::any_of(copied.items, isOther))
        return CopyFault::NotItems;
    return copied;
}

Pasted pasteOnto(const Project& project, const CopiedItems& copied, std::span<const Item> selected,
                 std::span<const Item> onwards) {
    const bool fillsSelection = copied.items.size() == 1;
    const std::span<const Item> places = fillsSelection ? selected : onwards;
    if (places.empty())
        return {{}, "Select the row to paste onto first"};
    if (copied.items.size() > places.size() && !fillsSelection)
        return {{},
                counted(copied.items.size(), "row was copied", "rows were copied") + "; there is room for " +
                    decimalText(places.size()) + " from " + nameOf(places.front()) +
                    " on: nothing was pasted"};
    Pasted pasted;
    const std::size_t count = fillsSelection ? places.size() : copied.items.size();
    for (std::size_t i = 0; i < count; ++i) {
        const CopiedItem& item = copied.items[fillsSelection ? 0 : i];
        if (const std::string refusal = refusalOf(item.item, places[i]); !refusal.empty())
            return {{}, refusal + ". Nothing was pasted"};
        addChanges(pasted.changes, project, places[i], item.texts);
    }
    return pasted;
}

std::vector<Change> clearedItems(const Project& project, std::span<const Item> items) {
    const Project fresh;
    std::vector<Change> changes;
    for (const Item item : items)
        std::ranges::move(changesBetween(project, fresh, item), std::back_inserter(changes));
    return changes;
}

} // namespace orvista
