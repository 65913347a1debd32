#include "items/ItemRows.h"

#include "items/AddressList.h"
#include "model/Item.h"
#include "model/Windows1252.h"

#include <algorithm>

namespace orvista {

namespace {

std::string variableNames(const VariableUse& use) {
    std::string names;
    const auto add = [&names](const auto& used, Kind kind) {
        for (std::size_t i = 0; i < used.size(); ++i)
            if (used[i])
                names.append(names.empty() ? "" : " ").append(nameOf({kind, i}));
    };
    add(use.floats, Kind::Float);
    add(use.booleans, Kind::Boolean);
    return names;
}

std::string joined(const std::vector<std::string>& names) {
    std::string all;
    for (const std::string& name : names)
        all.append(all.empty() ? "" : ", ").append(name);
    return all;
}

MessageRow messageRow(const AddressRow& place, const MessageDigest* message) {
    MessageRow row;
    row.item = place.item;
    row.address = place.address;
    row.reference = place.reference;
    row.isRead = message != nullptr;
    if (!row.isRead)
        return row;
    row.drawsSomething = message->drawsSomething;
    row.pages = message->pages;
    row.text = message->text;
    row.variables = variableNames(message->variables);
    row.bitmaps = joined(message->bitmaps);
    return row;
}

} // namespace

std::vector<MessageRow> messageRows(const Project& project, const MessageDigests& messages) {
    std::vector<MessageRow> rows(messageCount);
    for (const AddressRow& place : addressList(project, messages))
        if (isMessage(place.item))
            rows[messagePosition(place.item)] = messageRow(place, messages.of(place.item));
    return rows;
}

bool messageHas(const TextSearch& search, const MessageRow& row, std::string_view script) {
    if (search.isIn(nameOf(row.item)) || search.isIn(script))
        return true;
    const auto text = windows1252FromUtf8(row.text);
    return text && search.isIn(*text);
}

std::vector<VariableRow> variableRows(const Project& project, const MessageDigests& messages) {
    std::vector<VariableRow> rows;
    for (AddressRow& row : addressList(project, messages))
        if (isVariable(row.item))
            rows.push_back({row.item, row.address, row.reference, row.defaultValue,
                            row.format.empty() ? row.text : row.format, row.usedBy});
    return rows;
}

} // namespace orvista
