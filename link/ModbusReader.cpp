#include "link/ModbusReader.h"

#include "link/ModbusAnswers.h"
#include "model/Numbers.h"

#include <algorithm>
#include <bit>
#include <iterator>

namespace orvista {

namespace {

/// The protocol allows 125 registers in a request; floats take two.
constexpr std::size_t floatsPerRequest = 62;

constexpr std::array kindOrder{Kind::Regular, Kind::Emergency, Kind::Float, Kind::Boolean};

ReadStep stepFor(const std::vector<DisplayItem>& items, std::size_t first, std::size_t count) {
    const auto address = static_cast<std::uint16_t>(items[first].address);
    const bool isFloat = items[first].isFloat();
    const auto places = static_cast<std::uint16_t>(isFloat ? 2 * count : count);
    return {isFloat ? readRegistersRequest(address, places) : readCoilsRequest(address, places), first,
            count};
}

/// Items that belong to one request: of one kind, addressable, and not too many.
std::size_t itemsAtOnce(const std::vector<DisplayItem>& items, std::size_t first) {
    const std::size_t most = items[first].isFloat() ? floatsPerRequest : rowOf(items[first].item.kind).count;
    std::size_t count = 0;
    while (count < most && first + count < items.size() && items[first + count].isAddressable &&
           items[first + count].item.kind == items[first].item.kind)
        ++count;
    return count;
}

} // namespace

float DisplayItem::value() const {
    return std::bit_cast<float>(std::uint32_t{raw[1]} << 16 | raw[0]);
}

bool isAddressable(Kind kind, std::int64_t address) {
    return address >= 0 && address + rowOf(kind).addressesPerItem - 1 <= lastModbusAddress;
}

std::vector<DisplayItem> displayItems(const Project& project) {
    std::vector<DisplayItem> items;
    for (const Kind kind : kindOrder)
        for (std::size_t index = 0; index < rowOf(kind).count; ++index) {
            const std::int64_t address = addressOf(project, {kind, index});
            items.push_back({{kind, index}, address, isAddressable(kind, address)});
        }
    return items;
}

std::vector<ReadStep> readSteps(const std::vector<DisplayItem>& items) {
    std::vector<ReadStep> steps;
    for (std::size_t first = 0; first < items.size();) {
        const std::size_t count = itemsAtOnce(items, first);
        if (count > 0)
            steps.push_back(stepFor(items, first, count));
        first += std::max<std::size_t>(count, 1);
    }
    // Coils first: what is on is what people look for.
    std::stable_partition(steps.begin(), steps.end(),
                          [&items](const ReadStep& step) { return !items[step.firstItem].isFloat(); });
    return steps;
}

void takeAnswer(const ReadStep& step, std::span<const std::uint8_t> data, std::vector<DisplayItem>& items) {
    for (std::size_t i = 0; i < step.itemCount; ++i) {
        DisplayItem& item = items[step.firstItem + i];
        if (item.isFloat())
            item.raw = {registerOf(data, 2 * i), registerOf(data, 2 * i + 1)};
        else
            item.raw[0] = coilOf(data, i) ? 1 : 0;
    }
}

std::string unreachableItems(const std::vector<DisplayItem>& items) {
    std::string text;
    for (auto item = items.begin(); item != items.end();) {
        const auto end = std::find_if(item, items.end(), [&item](const DisplayItem& other) {
            return other.item.kind != item->item.kind || other.isAddressable != item->isAddressable;
        });
        if (!item->isAddressable) {
            text += (text.empty() ? "" : ", ") + item->name();
            if (end - item > 1)
                text += " to " + std::prev(end)->name();
        }
        item = end;
    }
    return text;
}

std::string valueText(const DisplayItem& item) {
    if (item.isFloat())
        return floatText(item.value());
    return item.isOn() ? "ON" : "OFF";
}

std::string wordsText(const DisplayItem& item) {
    std::string text;
    for (const std::uint16_t word : item.words())
        text += (text.empty() ? "" : " ") + hexWord(word);
    return text;
}

} // namespace orvista
