#include "simulator/MemoryItems.h"

#include "model/Item.h"
#include "model/Numbers.h"

#include <initializer_list>
#include <map>

namespace orvista {

namespace {

constexpr std::size_t mostItems = 1000;

using Names = std::map<std::int64_t, std::string>;

void addName(Names& names, std::int64_t address, const std::string& name) {
    std::string& all = names[address];
    all += (all.empty() ? "" : ", ") + name;
}

Names namesOf(std::initializer_list<Kind> kinds, const Project& project) {
    Names names;
    for (const Kind kind : kinds)
        for (std::size_t index = 0; index < rowOf(kind).count; ++index)
            addName(names, addressOf(project, {kind, index}), nameOf({kind, index}));
    return names;
}

std::string nameAt(const Names& names, std::int64_t address) {
    const auto found = names.find(address);
    return found == names.end() ? std::string() : found->second;
}

void addCoils(std::vector<MemoryItem>& items, const Project& project, const DeviceMemory& memory) {
    const Names names = namesOf({Kind::Boolean, Kind::Emergency, Kind::Regular}, project);
    for (std::size_t address = 0; address < DeviceMemory::size && items.size() < mostItems; ++address) {
        const auto number = static_cast<std::int64_t>(address);
        if (memory.coils[address] != 0)
            items.push_back({MemoryKind::Coil, number, nameAt(names, number), "on"});
    }
}

void addRegisters(std::vector<MemoryItem>& items, const Project& project, const DeviceMemory& memory) {
    const Names names = namesOf({Kind::Float}, project);
    for (std::size_t address = 0; address < DeviceMemory::size && items.size() < mostItems; ++address) {
        const auto number = static_cast<std::int64_t>(address);
        const std::string name = nameAt(names, number);
        const bool isFloat = !name.empty() && address + 1 < DeviceMemory::size;
        if (memory.registers[address] == 0 && !(isFloat && memory.registers[address + 1] != 0))
            continue;
        const std::string value =
            isFloat ? floatText(memory.floatAt(number)) : hexWord(memory.registers[address]);
        items.push_back({MemoryKind::Register, number, name, value});
        if (isFloat)
            ++address;
    }
}

} // namespace

std::vector<MemoryItem> itemsOn(const Project& project, const DeviceMemory& memory) {
    std::vector<MemoryItem> items;
    addCoils(items, project, memory);
    addRegisters(items, project, memory);
    return items;
}

} // namespace orvista
