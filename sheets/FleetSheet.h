#pragma once

#include "link/FleetList.h"
#include "link/FleetResult.h"
#include "sheets/Sheet.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

/// The list of displays and what became of them, as tables.
namespace orvista {

/// Reads the columns name, address, port, project and columns; the first two must be there. The heads of all
/// others are names of values, see script/Places.h. What is wrong with the head, a row or two of them is
/// added to `errors`. Nothing is to be begun then: the displays are those of the rows that can be read.
/// \param bytes UTF-8 with or without its mark, else Windows-1252
std::vector<FleetDisplay> readFleetSheet(std::string_view bytes, const FleetDefaults& defaults,
                                         SheetErrors& errors);

/// The list as it is read again: the same displays, with all their ports.
std::string fleetSheet(std::span<const FleetDisplay> displays);

/// The columns name, address, result, reason, files, seconds.
std::string fleetReport(std::span<const FleetResult> results);

} // namespace orvista
