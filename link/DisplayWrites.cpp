#include "link/DisplayWrites.h"

#include "link/ModbusConnection.h"
#include "link/ModbusReader.h"
#include "model/Item.h"
#include "model/Numbers.h"
#include "model/Text.h"
#include "model/VariableValue.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string_view>

namespace orvista {

namespace {

std::vector<Item> messagesNamed(const std::vector<std::string>& names) {
    std::vector<Item> messages;
    for (const std::string& name : names) {
        const auto message = messageNamed(name);
        if (!message)
            throw BadWrite(notAMessage(name));
        if (std::ranges::find(messages, *message) == messages.end())
            messages.push_back(*message);
    }
    return messages;
}

std::uint16_t requestAddress(const Project& project, Item item) {
    const std::int64_t address = addressOf(project, item);
    if (!isAddressable(item.kind, address))
        throw BadWrite(nameOf(item) + " has no address that a request can hold: the address map puts it at " +
                       decimalText(address));
    return static_cast<std::uint16_t>(address);
}

/// The first coil of a block that lies wholly within the addresses.
std::uint16_t blockAddress(const Project& project, Kind kind) {
    requestAddress(project, {kind, rowOf(kind).count - 1});
    return requestAddress(project, {kind, 0});
}

template <std::size_t count>
std::array<bool, count> switched(const std::vector<Item>& messages, Kind kind) {
    std::array<bool, count> on{};
    for (const Item message : messages)
        if (message.kind == kind)
            on.at(message.index) = true;
    return on;
}

float floatValue(const std::string& assignment, std::string_view value) {
    try {
        return enteredFloat(value);
    } catch (const std::invalid_argument& mistake) {
        throw BadWrite(assignment + ": " + mistake.what());
    }
}

/// The address of a name of digits, hexadecimal ones after "0x"; nothing for another name.
std::optional<double> addressNamed(std::string_view name) {
    if (GenenalModule::IsAllDigits(name))
        return leadingNumber(name);
    if (!startsWithIgnoringCase(name, "0x"))
        return std::nullopt;
    std::uint64_t address = 0;
    const char* const end = name.data() + name.size();
    const auto read = std::from_chars(name.data() + 2, end, address, 16);
    return read.ec == std::errc() && read.ptr == end ? std::optional(static_cast<double>(address))
                                                     : std::nullopt;
}

bool liesThere(const Project& project, double address) {
    const auto liesAtIt = [&](Item item) { return static_cast<double>(addressOf(project, item)) == address; };
    return std::ranges::any_of(allVariables(), liesAtIt) || std::ranges::any_of(allMessages(), liesAtIt);
}

/// PLC programmers write register 100 as 40101, and coil 100 as 00101. Whether that or the address 40101 is
/// meant cannot be told, and the wrong one is another register of the display.
void refuseReference(std::string_view name, std::string_view value) {
    constexpr double firstRegister = 40001;
    constexpr double lastRegister = 49999;
    const double number = leadingNumber(name);
    const bool isRegister = number >= firstRegister && number <= lastRegister;
    const bool isCoil = name.size() == 5 && name.front() == '0';
    if (!GenenalModule::IsAllDigits(name) || !(isRegister || isCoil))
        return;
    // There is no 00000; whoever writes it means the first coil.
    const auto meant = static_cast<std::int64_t>(std::max(number - (isRegister ? firstRegister : 1), 0.0));
    const std::string assigned = "=" + std::string(value);
    throw BadWrite(std::string(name) + " reads like a reference: write " + decimalText(meant) + assigned +
                   ", or 0x" + hexWord(static_cast<std::uint16_t>(number)) + assigned + " for address " +
                   decimalText(static_cast<std::int64_t>(number)));
}

DisplayWrite addressedWrite(const std::string& assignment, double address, std::string_view value) {
    const bool isSwitch = equalsIgnoringCase(value, "on") || equalsIgnoringCase(value, "off");
    const std::int64_t last = isSwitch ? lastModbusAddress : lastModbusAddress - 1;
    if (address > static_cast<double>(last))
        throw BadWrite(assignment + ": there are " + (isSwitch ? "coils" : "floats") + " from 0 to " +
                       decimalText(last));
    const auto place = static_cast<std::uint16_t>(address);
    return {decimalText(place), isSwitch ? coilRequest(place, *enteredSwitch(value))
                                         : registerPairRequest(place, floatValue(assignment, value))};
}

DisplayWrite namedWrite(const std::string& assignment, std::string_view name, std::string_view value,
                        const Project* project) {
    const auto item = variableNamed(name);
    if (!item && messageNamed(name))
        throw BadWrite(assignment + ": messages are switched, not written");
    if (!item)
        throw BadWrite(assignment + ": \"" + std::string(name) + "\" is neither an address nor one of " +
                       namesOf(Kind::Float) + " and " + namesOf(Kind::Boolean));
    if (project == nullptr)
        throw BadWrite(assignment + ": the address of " + nameOf(*item) +
                       " is in the project: give --project");
    if (item->kind == Kind::Float)
        return {nameOf(*item),
                registerPairRequest(requestAddress(*project, *item), floatValue(assignment, value))};
    const auto on = enteredSwitch(value);
    if (!on)
        throw BadWrite(assignment + ": a Boolean variable is on or off");
    return {nameOf(*item), coilRequest(requestAddress(*project, *item), *on)};
}

DisplayWrite assignedWrite(const std::string& assignment, const Project* project) {
    const std::size_t sign = assignment.find('=');
    if (sign == std::string::npos)
        throw BadWrite(assignment + " has no value: write RegVar3=12.5, CoilVar2=on or 200=1.5");
    const std::string_view name = std::string_view(assignment).substr(0, sign);
    const std::string_view value = std::string_view(assignment).substr(sign + 1);
    const auto address = addressNamed(name);
    if (!address)
        return namedWrite(assignment, name, value, project);
    if (project == nullptr || !liesThere(*project, *address))
        refuseReference(name, value);
    return addressedWrite(assignment, *address, value);
}

} // namespace

std::vector<DisplayWrite> switchWrites(const Project& project, const std::vector<std::string>& on,
                                       const std::vector<std::string>& off) {
    const std::vector<Item> toSwitchOn = messagesNamed(on);
    std::vector<DisplayWrite> writes;
    for (const Item message : messagesNamed(off)) {
        if (std::ranges::find(toSwitchOn, message) != toSwitchOn.end())
            throw BadWrite(nameOf(message) + " is in both --on and --off");
        writes.push_back({nameOf(message), coilRequest(requestAddress(project, message), false)});
    }
    for (const Item message : toSwitchOn)
        writes.push_back({nameOf(message), coilRequest(requestAddress(project, message), true)});
    return writes;
}

std::vector<DisplayWrite> onlyWrites(const Project& project, const std::vector<std::string>& on) {
    const std::vector<Item> messages = messagesNamed(on);
    return {{"the emergency messages",
             emergencyMessagesRequest(blockAddress(project, Kind::Emergency),
                                      switched<emergencyMessageCount>(messages, Kind::Emergency))},
            {"the regular messages",
             regularMessagesRequest(blockAddress(project, Kind::Regular),
                                    switched<regularMessageCount>(messages, Kind::Regular))}};
}

std::vector<DisplayWrite> assignedWrites(const std::vector<std::string>& assignments,
                                         const Project* project) {
    std::vector<DisplayWrite> writes;
    writes.reserve(assignments.size());
    for (const std::string& assignment : assignments)
        writes.push_back(assignedWrite(assignment, project));
    return writes;
}

void writeToDisplay(const DisplayAddress& display, const std::vector<DisplayWrite>& writes,
                    std::chrono::milliseconds timeout) {
    std::string written;
    try {
        ModbusConnection connection(display, timeout);
        for (const DisplayWrite& write : writes) {
            connection.ask(write.request);
            written.append(written.empty() ? "" : ", ").append(write.what);
        }
    } catch (const DisplayFailure& failure) {
        throw DisplayFailure(failure.what() + (written.empty() ? "" : "; written before: " + written));
    }
}

} // namespace orvista
