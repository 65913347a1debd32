#include "items/PlcNames.h"

#include "items/Labels.h"
#include "model/Numbers.h"
#include "model/Quotation.h"
#include "model/Text.h"

#include <algorithm>
#include <array>
#include <map>

namespace orvista {

namespace {

constexpr std::array ownNames{plc::registers, plc::booleans, plc::emergency, plc::regular,
                              plc::bits,      plc::realBits, plc::toDisplay, plc::globals};
static_assert(std::ranges::all_of(ownNames, [](std::string_view name) {
    return name.size() + longestPlcPrefix <= longestLabel;
}));

constexpr std::size_t mostListedFaults = 10;

/// Who has which name already, in capitals.
class TakenNames {
public:
    explicit TakenNames(std::string_view prefix) {
        for (const std::string_view name : ownNames)
            owners_.emplace(upperAscii(std::string(prefix).append(name)), "the program itself");
    }

    /// Who had it before; empty where nobody had.
    std::string take(std::string_view name, const std::string& owner) {
        const auto [place, isNew] = owners_.emplace(upperAscii(name), owner);
        return isNew ? "" : place->second;
    }

private:
    std::map<std::string, std::string> owners_;
};

/// An item's own name is no label, but may stand for it.
std::string nameFault(const AddressRow& row, const std::string& name) {
    return name == row.name ? "" : labelFault(name);
}

} // namespace

std::string plcPrefixFault(std::string_view prefix) {
    if (prefix.size() > longestPlcPrefix)
        return "is longer than " + decimalText(longestPlcPrefix) + " characters";
    return labelFault(std::string(prefix).append(plc::registers));
}

PlcNames plcNames(std::span<const AddressRow> rows, std::string_view prefix) {
    TakenNames taken(prefix);
    PlcNames named;
    for (const AddressRow& row : rows) {
        const std::string& name = named.names.emplace_back(
            std::string(prefix).append(row.noted.label.empty() ? row.name : row.noted.label));
        const std::string fault = nameFault(row, name);
        const std::string other = taken.take(name, row.name);
        if (!fault.empty())
            named.faults.push_back(row.name + ": " + quotation(name) + " " + fault);
        else if (!other.empty())
            named.faults.push_back(row.name + ": " + quotation(name) + " is a name of " + other + " already");
    }
    return named;
}

std::string plcFaultText(const PlcNames& names) {
    std::string text;
    for (std::size_t i = 0; i < names.faults.size() && i < mostListedFaults; ++i)
        text.append(i > 0 ? "\n" : "").append(names.faults[i]);
    if (names.faults.size() > mostListedFaults)
        text.append("\nand ").append(decimalText(names.faults.size() - mostListedFaults)).append(" more");
    return text;
}

} // namespace orvista
