#include "check/AddressCheck.h"

#include "check/FindingList.h"
#include "model/Item.h"
#include "model/Numbers.h"
#include "model/Text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace orvista {

namespace {

/// A block of addresses, all of one table.
struct CheckedBlock {
    std::string_view name;
    std::int64_t first;
    std::int64_t last;
    /// Where it may begin, so that all of it has an address.
    std::int64_t lowestStart;
    std::int64_t highestStart;
};

CheckedBlock blockOf(Kind kind, std::string_view name, const Project& project) {
    const std::int64_t first = addressOf(project, {kind, 0});
    const auto length = static_cast<std::int64_t>(rowOf(kind).count) * rowOf(kind).addressesPerItem;
    return {name, first, first + length - 1, 0, lastModbusAddress - length + 1};
}

/// The regular messages always come a fixed way after the emergency messages, so that each of the two blocks
/// leaves room for the other.
void keepTogether(CheckedBlock& emergency, CheckedBlock& regular) {
    const std::int64_t way = regularStartAfter(0);
    regular.lowestStart = way;
    emergency.highestStart = regular.highestStart - way;
}

std::string range(std::int64_t first, std::int64_t last) {
    return decimalText(first) + (first == last ? "" : " to " + decimalText(last));
}

std::string capitalised(std::string_view text) {
    return upperAscii(text.substr(0, 1)) + std::string(text.substr(1));
}

void checkRange(const CheckedBlock& block, FindingList& found) {
    if (block.first >= 0 && block.last <= lastModbusAddress)
        return;
    found.add(Code::AddressRange, {}, [&] {
        return capitalised(block.name) + " lie at " + range(block.first, block.last) +
               ", but addresses go from 0 to 65535, so that not all of them can be reached: choose a start "
               "from " +
               decimalText(block.lowestStart) + " to " + decimalText(block.highestStart) + ".";
    });
}

void checkOverlap(const CheckedBlock& one, const CheckedBlock& other, FindingList& found) {
    const std::int64_t first = std::max(one.first, other.first);
    const std::int64_t last = std::min(one.last, other.last);
    if (first > last)
        return;
    found.add(Code::AddressOverlap, {}, [&] {
        return capitalised(one.name) + " (" + range(one.first, one.last) + ") and " +
               std::string(other.name) + " (" + range(other.first, other.last) + ") share coil" +
               (first == last ? " " : "s ") + range(first, last) +
               ", so that writing the one switches the other: move one of the two blocks.";
    });
}

void checkRegularStart(const Project& project, FindingList& found) {
    const std::int64_t expected = regularStartAfter(project.AlertMessage);
    if (project.RegularMessage == expected)
        return;
    found.add(Code::RegularStart, {}, [&] {
        return "Regular messages begin at " + decimalText(project.RegularMessage) +
               ", but no file keeps that: on the display they begin at " + decimalText(expected) +
               ", 20 after the emergency messages. Set their start to " + decimalText(expected) + ".";
    });
}

} // namespace

Findings checkAddressMap(const Project& project) {
    const CheckedBlock floats = blockOf(Kind::Float, "float variables", project);
    std::array coils = {blockOf(Kind::Boolean, "Boolean variables", project),
                        blockOf(Kind::Emergency, "emergency messages", project),
                        blockOf(Kind::Regular, "regular messages", project)};
    keepTogether(coils[1], coils[2]);
    FindingList found{Item()};
    checkRange(floats, found);
    for (const CheckedBlock& block : coils)
        checkRange(block, found);
    for (std::size_t one = 0; one < coils.size(); ++one)
        for (std::size_t other = one + 1; other < coils.size(); ++other)
            checkOverlap(coils[one], coils[other], found);
    checkRegularStart(project, found);
    return std::move(found).sorted();
}

} // namespace orvista
