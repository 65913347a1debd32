#include "sheets/FleetSheet.h"

#include "items/ProjectNotes.h"
#include "model/Numbers.h"
#include "model/Quotation.h"
#include "model/Text.h"
#include "script/Places.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <memory>
#include <optional>
#include <set>
#include <utility>

namespace orvista {

namespace {

constexpr std::array<std::string_view, fleetColumns.size() + 1> listColumns{
    fleetColumns[fleetColumn::Name], fleetColumns[fleetColumn::Address], fleetColumns[fleetColumn::Port],
    fleetColumns[fleetColumn::Project], "columns"};
constexpr std::size_t columnsColumn = fleetColumns.size();

/// The heads after the known ones. Where one is no name, which is added to the errors, none of them counts.
std::shared_ptr<const ListedValues::Names> valueNames(const SheetReader& sheet, SheetErrors& errors) {
    bool areNames = true;
    for (const std::string& head : sheet.furtherHeads()) {
        if (isPlaceName(head))
            continue;
        errors.add(1, {},
                   quotation(head) + " is not a name of values: a name is a letter, then letters, digits " +
                       "and _");
        areNames = false;
    }
    return areNames ? std::make_shared<const ListedValues::Names>(sheet.furtherHeads()) : nullptr;
}

std::optional<int> panelColumnsOf(SheetReader& sheet) {
    const std::string_view text = trimBlanksAndTabs(sheet.cell(columnsColumn));
    if (text.empty())
        return std::nullopt;
    int columns = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), columns);
    if (read.ec == std::errc() && read.ptr == text.data() + text.size() && columns >= fewestNotedColumns &&
        columns <= mostNotedColumns)
        return columns;
    sheet.fail(columnsColumn, quotation(text) + " is not a number from " + decimalText(fewestNotedColumns) +
                                  " to " + decimalText(mostNotedColumns));
    return std::nullopt;
}

/// What the sheet's reader has found to be wrong already.
bool holdsNul(const SheetReader& sheet) {
    for (std::size_t column = 0; column < listColumns.size(); ++column)
        if (sheet.cell(column).find('\0') != std::string::npos)
            return true;
    return false;
}

std::vector<FleetRow> rowsOf(SheetReader& sheet, SheetErrors& errors) {
    std::vector<FleetRow> rows;
    const auto names = valueNames(sheet, errors);
    while (sheet.next()) {
        const auto columns = panelColumnsOf(sheet);
        if (!holdsNul(sheet))
            rows.push_back({sheet.row(), sheet.cell(fleetColumn::Name), sheet.cell(fleetColumn::Address),
                            sheet.cell(fleetColumn::Port), sheet.cell(fleetColumn::Project), columns,
                            ListedValues(names, sheet.furtherCells())});
    }
    return rows;
}

/// Each once in any case, in the order in which the displays have them.
std::vector<std::string> valueNames(std::span<const FleetDisplay> displays) {
    std::vector<std::string> names;
    std::set<std::string> known;
    const std::string* former = nullptr; // displays of one list share their names
    for (const FleetDisplay& display : displays) {
        const auto own = display.values.names();
        if (own.data() == former)
            continue;
        former = own.data();
        for (const std::string& name : own)
            if (known.insert(lowerAscii(name)).second)
                names.push_back(name);
    }
    return names;
}

} // namespace

std::vector<FleetDisplay> readFleetSheet(std::string_view bytes, const FleetDefaults& defaults,
                                         SheetErrors& errors) {
    SheetReader sheet(bytes, listColumns, errors, FurtherColumns::Taken);
    if (!sheet.hasHead())
        return {};
    const bool hasName = sheet.needs(fleetColumn::Name);
    const bool hasAddress = sheet.needs(fleetColumn::Address);
    if (!hasName || !hasAddress)
        return {};
    const std::vector<FleetRow> rows = rowsOf(sheet, errors);
    Fleet fleet = fleetOf(rows, defaults);
    for (FleetRefusal& refusal : fleet.refusals)
        errors.add(refusal.row, refusal.column, std::move(refusal.text));
    if (rows.empty() && errors.none())
        errors.add(0, {}, "has no displays");
    return std::move(fleet.displays);
}

std::string fleetSheet(std::span<const FleetDisplay> displays) {
    const std::vector<std::string> names = valueNames(displays);
    const bool hasColumns = std::ranges::any_of(
        displays, [](const FleetDisplay& display) { return display.columns.has_value(); });
    std::string csv(utf8Mark);
    std::vector<std::string> head(fleetColumns.begin(), fleetColumns.end());
    if (hasColumns)
        head.emplace_back(listColumns[columnsColumn]);
    head.insert(head.end(), names.begin(), names.end());
    appendRecord(csv, head);
    for (const FleetDisplay& display : displays) {
        std::vector<std::string> cells{display.name, display.address.host, decimalText(display.address.port),
                                       display.project};
        if (hasColumns)
            cells.push_back(display.columns ? decimalText(*display.columns) : std::string());
        for (const std::string& name : names) {
            const std::string* const value = display.values.find(name);
            cells.push_back(value != nullptr ? *value : std::string());
        }
        appendRecord(csv, cells);
    }
    return csv;
}

std::string fleetReport(std::span<const FleetResult> results) {
    std::string csv(utf8Mark);
    appendRecord(csv, std::vector<std::string>(fleetResultColumns.begin(), fleetResultColumns.end()));
    for (const FleetResult& result : results)
        appendRecord(csv, fleetResultCells(result));
    return csv;
}

} // namespace orvista
