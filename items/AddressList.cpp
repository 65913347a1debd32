#include "items/AddressList.h"

#include "model/Item.h"
#include "model/Numbers.h"
#include "model/Windows1252.h"

#include <algorithm>
#include <map>
#include <utility>

namespace orvista {

const std::array<std::string_view, addressColumnCount> addressColumns{
    "kind",  "number",    "name",       "table",          "address", "address_hex", "reference",
    "count", "data_type", "word_order", "write_function", "used_by", "default",     "format",
    "text",  "note",      "label",      "unit",           "comment"};

namespace {

constexpr std::string_view coilTable = "coil";

/// What is the same for all items of a kind.
struct ListedBlock {
    std::string_view kind;
    Kind items;
    std::string_view table;
    std::string_view dataType;
    std::string_view wordOrder;
    std::string_view writeFunction;
};

constexpr std::array<ListedBlock, 4> blocks{{
    {"float", Kind::Float, "holding register", "float32", "low word first", "16"},
    {"boolean", Kind::Boolean, coilTable, "bit", "", "5"},
    {"emergency", Kind::Emergency, coilTable, "bit", "", "5 15"},
    {"regular", Kind::Regular, coilTable, "bit", "", "5 15"},
}};

/// The number under which many programs know a place: 0 for coils or 4 for registers, then the place counted
/// from 1.
std::string referenceNumber(char table, std::int64_t address) {
    std::string place = decimalText(address + 1);
    place.insert(0, 4 - std::min<std::size_t>(place.size(), 4), '0');
    return table + place;
}

/// Which messages show the variables.
class VariableUsers {
public:
    explicit VariableUsers(const MessageDigests& messages) {
        for (const Item message : allMessages())
            if (const MessageDigest* const digest = messages.of(message))
                note(nameOf(message), digest->variables);
    }

    const std::string& ofFloat(std::size_t index) const { return floats_[index]; }
    const std::string& ofBoolean(std::size_t index) const { return booleans_[index]; }

private:
    void note(const std::string& message, const VariableUse& use) {
        const auto noteIn = [&message](auto& users, const auto& used) {
            for (std::size_t i = 0; i < used.size(); ++i)
                if (used[i])
                    users[i].append(users[i].empty() ? "" : " ").append(message);
        };
        noteIn(floats_, use.floats);
        noteIn(booleans_, use.booleans);
    }

    std::array<std::string, floatVariableCount> floats_;
    std::array<std::string, booleanVariableCount> booleans_;
};

AddressRow placedRow(const ListedBlock& block, const Project& project, std::size_t index) {
    AddressRow row;
    row.kind = block.kind;
    row.number = index + 1;
    row.item = {block.items, index};
    row.name = nameOf(row.item);
    row.table = block.table;
    row.address = addressOf(project, row.item);
    row.count = rowOf(block.items).addressesPerItem;
    row.dataType = block.dataType;
    row.wordOrder = block.wordOrder;
    row.writeFunction = block.writeFunction;
    if (row.address < 0 || row.address > lastModbusAddress) {
        row.note = "not addressable";
        return row;
    }
    row.addressHex = "0x" + hexWord(static_cast<std::uint16_t>(row.address));
    row.reference = referenceNumber(block.table == coilTable ? '0' : '4', row.address);
    return row;
}

void describeVariable(AddressRow& row, const Project& project, std::size_t index,
                      const VariableUsers& users) {
    if (row.table == coilTable) {
        const BooleanVariable& variable = project.CoilVar[index];
        row.usedBy = users.ofBoolean(index);
        row.defaultValue = utf8FromWindows1252(variable.defaultValue);
        row.text = utf8FromWindows1252(variable.offText + "/" + variable.onText);
    } else {
        const FloatVariable& variable = project.RegVar[index];
        row.usedBy = users.ofFloat(index);
        row.defaultValue = utf8FromWindows1252(variable.defaultValue);
        row.format = utf8FromWindows1252(variable.width + "." + variable.precision);
    }
    row.isUsed = !row.usedBy.empty();
}

void describeMessage(AddressRow& row, const MessageDigest* message) {
    if (message == nullptr)
        return;
    row.isUsed = message->drawsSomething;
    row.text = message->text;
}

/// Coils of different blocks may lie on one another; each then names the others.
void noteSharedCoils(std::vector<AddressRow>& rows) {
    std::map<std::int64_t, std::vector<std::size_t>> byAddress;
    for (std::size_t i = 0; i < rows.size(); ++i)
        if (rows[i].table == coilTable)
            byAddress[rows[i].address].push_back(i);
    for (const auto& [address, sharing] : byAddress)
        for (const std::size_t row : sharing)
            for (const std::size_t other : sharing)
                if (other != row)
                    rows[row]
                        .note.append(rows[row].note.empty() ? "" : "; ")
                        .append("also " + rows[other].name);
}

} // namespace

std::array<std::string, addressColumnCount> addressCells(const AddressRow& row) {
    return {std::string(row.kind),
            decimalText(row.number),
            row.name,
            std::string(row.table),
            decimalText(row.address),
            row.addressHex,
            row.reference,
            decimalText(row.count),
            std::string(row.dataType),
            std::string(row.wordOrder),
            std::string(row.writeFunction),
            row.usedBy,
            row.defaultValue,
            row.format,
            row.text,
            row.note,
            row.noted.label,
            row.noted.unit,
            row.noted.comment};
}

void addNotes(std::vector<AddressRow>& rows, const ProjectNotes& notes) {
    for (AddressRow& row : rows)
        row.noted = notes.of(row.item);
}

std::vector<AddressRow> addressList(const Project& project, AddressRows wanted) {
    std::vector<AddressRow> rows = addressList(project, MessageDigests(project));
    if (wanted == AddressRows::UsedOnly)
        std::erase_if(rows, [](const AddressRow& row) { return !row.isUsed; });
    return rows;
}

std::vector<AddressRow> addressList(const Project& project, const MessageDigests& messages) {
    const VariableUsers users(messages);
    std::vector<AddressRow> rows;
    for (const ListedBlock& block : blocks) {
        for (std::size_t index = 0; index < rowOf(block.items).count; ++index) {
            AddressRow row = placedRow(block, project, index);
            if (isMessage(row.item))
                describeMessage(row, messages.of(row.item));
            else
                describeVariable(row, project, index, users);
            rows.push_back(std::move(row));
        }
    }
    noteSharedCoils(rows);
    return rows;
}

} // namespace orvista
