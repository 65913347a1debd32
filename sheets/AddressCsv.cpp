#include "sheets/AddressSheet.h"

#include "model/Text.h"
#include "sheets/Csv.h"

#include <vector>

namespace orvista {

std::string addressCsv(std::span<const AddressRow> rows, char separator) {
    std::string csv(utf8Mark);
    appendRecord(csv, std::vector<std::string>(addressColumns.begin(), addressColumns.end()), separator);
    for (const AddressRow& row : rows)
        appendRecord(csv, addressCells(row), separator);
    return csv;
}

} // namespace orvista
