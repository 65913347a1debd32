#include "sheets/CopiedTable.h"

#include "items/ItemRows.h"
#include "model/Numbers.h"
#include "model/Windows1252.h"
#include "sheets/Csv.h"

#include <algorithm>
#include <vector>

namespace orvista {

std::string copiedText(const CopiedItems& copied, const Project& project, const MessageDigests& messages) {
    std::string text;
    const auto add = [&text](const std::vector<std::string>& cells) { appendRecord(text, cells, '\t'); };
    if (!copied.items.empty() && isMessage(copied.items.front().item)) {
        add({"name", "address", "reference", "pages", "text", "variables", "bitmaps", "script"});
        const std::vector<MessageRow> rows = messageRows(project, messages);
        for (const CopiedItem& item : copied.items) {
            const MessageRow& row = *std::ranges::find(rows, item.item, &MessageRow::item);
            add({nameOf(row.item), decimalText(row.address), row.reference, decimalText(row.pages), row.text,
                 row.variables, row.bitmaps, utf8FromWindows1252(item.texts.front())});
        }
        return text;
    }
    add({"name", "address", "reference", "default", "format", "used by"});
    const std::vector<VariableRow> rows = variableRows(project, messages);
    for (const CopiedItem& item : copied.items) {
        const VariableRow& row = *std::ranges::find(rows, item.item, &VariableRow::item);
        add({nameOf(row.item), decimalText(row.address), row.reference, row.defaultValue, row.format,
             row.usedBy});
    }
    return text;
}

} // namespace orvista
