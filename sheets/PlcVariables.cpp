#include "sheets/PlcVariables.h"

#include "display/DisplayValues.h"
#include "model/Numbers.h"

#include <algorithm>
#include <cmath>

namespace orvista {

namespace {

/// The most registers that one request with function 16 can write.
constexpr std::string_view mostRegisters = "123";

/// "1.85", "100.0", "1.0E+30"
std::string realLiteral(float value) {
    std::string text = floatText(value);
    const std::size_t exponent = std::min(text.find('e'), text.size());
    if (exponent < text.size())
        text[exponent] = 'E';
    if (text.find('.') == std::string::npos)
        text.insert(exponent, ".0");
    return text;
}

std::string initialLiteral(Item item, const Project& project) {
    if (item.kind == Kind::Float) {
        const float value = defaultFloat(project.RegVar[item.index]);
        return std::isfinite(value) ? realLiteral(value) : "";
    }
    return item.kind == Kind::Boolean && defaultBoolean(project.CoilVar[item.index]) ? "TRUE" : "FALSE";
}

std::string rowPlaceText(const AddressRow& row) {
    std::string text(row.table);
    if (!row.reference.empty())
        text.append(" ").append(row.reference);
    text.append(", address ").append(decimalText(row.address));
    if (!row.wordOrder.empty())
        text.append(", ").append(wordOrderText(row));
    return text;
}

/// "STDMSG4: Level of tank 1": the messages that show a variable, or the message itself, and the comment.
std::string commentText(const AddressRow& row) {
    const std::string& who = isMessage(row.item) ? row.name : row.usedBy;
    const std::string& comment = row.noted.comment;
    return who + (who.empty() || comment.empty() ? "" : ": ") + comment;
}

std::string descriptionOf(const AddressRow& row, bool holdsDefault) {
    std::string text;
    const auto append = [&text](const std::string& part) {
        if (!part.empty())
            text.append(text.empty() ? "" : "; ").append(part);
    };
    append(row.noted.unit);
    append(rowPlaceText(row));
    append(row.note);
    if (!holdsDefault)
        append("REAL cannot hold the default " + row.defaultValue);
    append(commentText(row));
    return text;
}

PlcVariable variableOf(const AddressRow& row, const std::string& name, const Project& project) {
    PlcVariable variable{.item = row.item,
                         .name = name,
                         .isAddressable = !row.reference.empty(),
                         .type = row.item.kind == Kind::Float ? "REAL" : "BOOL",
                         .initial = initialLiteral(row.item, project),
                         .text = {}};
    variable.text = descriptionOf(row, !variable.initial.empty());
    return variable;
}

PlcBuffer bufferOf(Kind kind, const Project& project, std::string_view prefix, std::string_view name,
                   std::string_view request) {
    const KindRow& row = rowOf(kind);
    return {.kind = kind,
            .name = std::string(prefix).append(name),
            .count = row.count * static_cast<std::size_t>(row.addressesPerItem),
            .type = kind == Kind::Float ? "WORD" : "BOOL",
            .text = std::string(request)
                        .append(", from address ")
                        .append(decimalText(addressOf(project, {kind, 0})))};
}

} // namespace

PlcVariables plcVariables(std::span<const AddressRow> rows, const PlcNames& names, std::string_view prefix,
                          const Project& project) {
    const auto buffer = [&](Kind kind, std::string_view name, std::string_view request) {
        return bufferOf(kind, project, prefix, name, request);
    };
    PlcVariables variables{
        .items = {},
        .buffers = {buffer(Kind::Float, plc::registers,
                           "holding registers, function 16, at most " + std::string(mostRegisters) +
                               " in a request"),
                    buffer(Kind::Boolean, plc::booleans, "coils of Boolean variables, function 5"),
                    buffer(Kind::Emergency, plc::emergency, "coils of emergency messages, function 5 or 15"),
                    buffer(Kind::Regular, plc::regular, "coils of regular messages, function 5 or 15")},
        .prefix = std::string(prefix)};
    for (std::size_t i = 0; i < rows.size(); ++i)
        variables.items.push_back(variableOf(rows[i], names.names[i], project));
    return variables;
}

} // namespace orvista
