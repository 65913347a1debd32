#include "sheets/FleetSheet.h"

#include "model/Numbers.h"

#include <algorithm>
#include <utility>

namespace orvista {

namespace {

std::vector<FleetRow> rowsOf(SheetReader& sheet) {
    std::vector<FleetRow> rows;
    while (sheet.next())
        rows.push_back({sheet.row(), sheet.cell(fleetColumn::Name), sheet.cell(fleetColumn::Address),
                        sheet.cell(fleetColumn::Port), sheet.cell(fleetColumn::Project)});
    return rows;
}

} // namespace

std::vector<FleetDisplay> readFleetSheet(std::string_view bytes, const FleetDefaults& defaults,
                                         SheetErrors& errors) {
    SheetReader sheet(bytes, fleetColumns, errors);
    if (!sheet.hasHead())
        return {};
    const bool hasName = sheet.needs(fleetColumn::Name);
    const bool hasAddress = sheet.needs(fleetColumn::Address);
    if (!hasName || !hasAddress)
        return {};
    const std::vector<FleetRow> rows = rowsOf(sheet);
    Fleet fleet = fleetOf(rows, defaults);
    for (FleetRefusal& refusal : fleet.refusals)
        errors.add(refusal.row, refusal.column, std::move(refusal.text));
    if (rows.empty() && errors.none())
        errors.add(0, {}, "has no displays");
    return std::move(fleet.displays);
}

std::string fleetSheet(std::span<const FleetDisplay> displays) {
    std::string csv(utf8Mark);
    appendRecord(csv, std::vector<std::string>(fleetColumns.begin(), fleetColumns.end()));
    for (const FleetDisplay& display : displays)
        appendRecord(csv, std::vector<std::string>{display.name, display.address.host,
                                                   decimalText(display.address.port), display.project});
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
