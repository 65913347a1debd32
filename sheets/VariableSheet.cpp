#include "sheets/VariableSheet.h"

#include "model/Fields.h"
#include "model/Numbers.h"
#include "model/Quotation.h"
#include "model/Text.h"
#include "model/Windows1252.h"

#include <algorithm>
#include <map>
#include <utility>
#include <variant>

namespace orvista {

namespace {

constexpr std::size_t nameColumn = 0;

/// The variable's name, then the fields of both kinds, those of the same name in one column.
const std::vector<std::string_view>& columnNames() {
    static const std::vector<std::string_view> columns = [] {
        std::vector<std::string_view> names{"name"};
        for (const Kind kind : {Kind::Float, Kind::Boolean})
            for (const Field& field : fieldsOf(kind))
                if (std::ranges::find(names, field.name) == names.end())
                    names.push_back(field.name);
        return names;
    }();
    return columns;
}

class VariableImport {
public:
    VariableImport(std::string_view bytes, const Project& project)
        : project_(project), sheet_(bytes, columnNames(), result_.errors) {}

    SheetImport run() {
        if (sheet_.hasHead() && sheet_.needs(nameColumn))
            while (sheet_.next())
                takeRow();
        for (auto& [item, row] : rows_)
            std::ranges::move(row.changes, std::back_inserter(result_.changes));
        if (!result_.errors.none())
            result_.changes.clear();
        return std::move(result_);
    }

private:
    struct Row {
        std::size_t number;
        std::vector<Change> changes;
    };

    void takeRow() {
        const std::string name(trimBlanksAndTabs(sheet_.cell(nameColumn)));
        const auto item = variableNamed(name);
        if (!item)
            return sheet_.fail(nameColumn, notAVariable(quotation(name)));
        const auto [row, isNew] = rows_.try_emplace(*item, Row{sheet_.row(), {}});
        if (!isNew)
            return sheet_.fail(nameColumn,
                               name + " stands in row " + decimalText(row->second.number) + " already");
        for (std::size_t column = nameColumn + 1; column < columnNames().size(); ++column) {
            if (const Field* const field = fieldNamed(item->kind, columnNames()[column]))
                takeCell(column, *item, *field, row->second.changes);
            else if (!sheet_.cell(column).empty())
                sheet_.fail(column, nameOf(*item) + " has none");
        }
    }

    void takeCell(std::size_t column, Item item, const Field& field, std::vector<Change>& changes) {
        const std::string& cell = sheet_.cell(column);
        std::string before = textOf(project_, item, field);
        if (!sheet_.has(column) || isEquivalent(field, cell, before))
            return;
        auto text = cellText(field, cell);
        if (const auto* const fault = std::get_if<CellFault>(&text))
            return sheet_.fail(column, fault->text);
        auto& after = std::get<std::string>(text);
        if (after == before)
            return;
        changes.push_back({item, &field, std::move(before), std::move(after)});
        if (trimBlanksAndTabs(cell).empty())
            ++result_.fromEmptyCells;
    }

    const Project& project_;
    SheetImport result_;
    SheetReader sheet_;
    std::map<Item, Row> rows_;
};

} // namespace

std::string variableSheet(const Project& project) {
    const std::vector<std::string_view>& columns = columnNames();
    std::string csv(utf8Mark);
    appendRecord(csv, std::vector<std::string>(columns.begin(), columns.end()));
    for (const Item item : allVariables()) {
        std::vector<std::string> cells{nameOf(item)};
        for (std::size_t column = nameColumn + 1; column < columns.size(); ++column) {
            const Field* const field = fieldNamed(item.kind, columns[column]);
            cells.push_back(field ? utf8FromWindows1252(textOf(project, item, *field)) : std::string());
        }
        appendRecord(csv, cells);
    }
    return csv;
}

SheetImport importVariables(std::string_view bytes, const Project& project) {
    return VariableImport(bytes, project).run();
}

} // namespace orvista
