#pragma once

#include "link/ModbusFrames.h"
#include "model/Item.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

/// Reading everything that a project places in a device's Modbus tables: which messages are on, and the value
/// of every variable.
namespace orvista {

/// Whether an item lies wholly in 0 to 65535; else no request reaches it.
bool isAddressable(Kind kind, std::int64_t address);

/// One message or variable, and what the device holds for it.
struct DisplayItem {
    Item item;
    std::int64_t address = 0;
    /// Of its place; where it is false, nothing is read.
    bool isAddressable = false;
    /// A coil's 0 or 1 in the first; the two registers of a float, by address.
    std::array<std::uint16_t, 2> raw{};

    std::string name() const { return nameOf(item); }
    bool isFloat() const { return item.kind == Kind::Float; }
    bool isMessage() const { return orvista::isMessage(item); }
    /// Of a message or Boolean variable.
    bool isOn() const { return raw[0] != 0; }
    /// Of a float variable: the first register is its low word.
    float value() const;
    /// The words that were read: one, for a float two.
    std::span<const std::uint16_t> words() const { return {raw.data(), isFloat() ? 2U : 1U}; }
    bool operator==(const DisplayItem&) const = default;
};

/// Regular messages, emergency messages, float variables, Boolean variables, each by number; nothing is read
/// yet.
std::vector<DisplayItem> displayItems(const Project& project);

/// A request, and the items that its answer is about: that many from the first on.
struct ReadStep {
    Frame request;
    std::size_t firstItem = 0;
    std::size_t itemCount = 0;
};

/// What is to be asked for, in order: both message blocks, the Boolean block, and the registers in requests
/// of at most 124, so that no float is torn in two. Of a block that lies partly outside the addresses the
/// part inside is read.
std::vector<ReadStep> readSteps(const std::vector<DisplayItem>& items);

/// \param data of the answer to the step's request, as answerData() gives it
void takeAnswer(const ReadStep& step, std::span<const std::uint8_t> data, std::vector<DisplayItem>& items);

/// "STDMSG31 to STDMSG40, RegVar64": the items that no request reaches; empty where there are none.
std::string unreachableItems(const std::vector<DisplayItem>& items);

/// "ON", "OFF" or a float's digits. \param item that is addressable
std::string valueText(const DisplayItem& item);

/// The words that were read, in hexadecimal: "0000 3FC0".
std::string wordsText(const DisplayItem& item);

} // namespace orvista
