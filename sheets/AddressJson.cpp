#include "sheets/AddressSheet.h"

#include "model/JsonText.h"
#include "model/JsonValue.h"

#include <utility>

namespace orvista {

namespace {

/// A cell that is a number everywhere is one here, too.
JsonValue addressObject(const AddressRow& row) {
    JsonValue object = JsonValue::Object();
    const auto cells = addressCells(row);
    for (std::size_t column = 0; column < addressColumnCount; ++column) {
        object.memberToSet(addressColumns[column]) = cells[column];
        if (addressColumns[column] == "word_order")
            object.memberToSet("byte_order") = row.wordOrder.empty() ? "" : byteOrder;
    }
    object.memberToSet("number") = row.number;
    object.memberToSet("address") = row.address;
    object.memberToSet("count") = row.count;
    return object;
}

} // namespace

std::string addressJson(std::span<const AddressRow> rows, const Project& project, const AddressHead& head) {
    JsonValue::Array list;
    for (const AddressRow& row : rows)
        list.push_back(addressObject(row));
    return jsonText(JsonValue::Object{{"version", head.release},
                                      {"file", projectFileNameOf(project)},
                                      {"display", head.display},
                                      {"fingerprint", head.fingerprint},
                                      {"time", head.time},
                                      {"addresses", std::move(list)}});
}

} // namespace orvista
