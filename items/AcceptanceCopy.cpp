#include "items/AcceptanceCopy.h"

#include "items/CheckedTexts.h"
#include "items/CountedTexts.h"

#include <cstdint>
#include <utility>

namespace orvista {

namespace {

constexpr std::string_view acceptanceFirstLine = "orvista-acceptance 1\n";
/// More than a project has.
constexpr std::size_t mostCopiedItems = 1'000;

void addWords(CountedTextWriter& writer, HeldWords words) {
    for (const std::uint16_t word : words)
        writer.add(std::size_t{word});
}

HeldWords copiedWords(CountedTextReader& reader) {
    HeldWords words{};
    for (std::uint16_t& word : words)
        word = reader.number<std::uint16_t>();
    return words;
}

/// False where the texts name no such item.
bool takeItems(CountedTextReader& reader, std::vector<DisplayItem>& items) {
    bool isWell = true;
    for (std::size_t left = reader.number(mostCopiedItems); left > 0 && !reader.hasFailed(); --left) {
        const auto item = itemNamed(reader.text());
        DisplayItem copied;
        copied.address = reader.number<std::int64_t>();
        copied.raw = copiedWords(reader);
        isWell = isWell && item && item->kind != Kind::AddressMap;
        if (!isWell)
            continue;
        copied.item = *item;
        copied.isAddressable = isAddressable(item->kind, copied.address);
        items.push_back(copied);
    }
    return isWell;
}

bool takeWritten(CountedTextReader& reader, const std::vector<DisplayItem>& items,
                 std::vector<WrittenItem>& written) {
    bool isWell = true;
    for (std::size_t left = reader.number(mostCopiedItems); left > 0 && !reader.hasFailed(); --left) {
        WrittenItem item;
        item.place = reader.number<std::size_t>();
        item.before = copiedWords(reader);
        item.wrote = copiedWords(reader);
        isWell = isWell && item.place < items.size() && items[item.place].isAddressable;
        written.push_back(item);
    }
    return isWell;
}

} // namespace

std::string acceptanceCopy(const CutOffAcceptance& acceptance) {
    CountedTextWriter writer;
    writer.add(acceptance.address);
    writer.add(acceptance.before.size());
    for (const DisplayItem& item : acceptance.before) {
        writer.add(item.name());
        writer.add(std::to_string(item.address));
        addWords(writer, item.raw);
    }
    writer.add(acceptance.written.size());
    for (const WrittenItem& item : acceptance.written) {
        writer.add(item.place);
        addWords(writer, item.before);
        addWords(writer, item.wrote);
    }
    return checkedTexts(acceptanceFirstLine, writer.bytes());
}

std::optional<CutOffAcceptance> readAcceptanceCopy(std::string_view bytes) {
    const auto texts = textsChecked(acceptanceFirstLine, bytes);
    if (!texts)
        return std::nullopt;
    CountedTextReader reader(*texts);
    CutOffAcceptance acceptance;
    acceptance.address = reader.text();
    const bool isWell = takeItems(reader, acceptance.before) &&
                        takeWritten(reader, acceptance.before, acceptance.written) && reader.isDone();
    return isWell ? std::optional(std::move(acceptance)) : std::nullopt;
}

} // namespace orvista
