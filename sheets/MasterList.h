#pragma once

#include "link/FleetList.h"
#include "sheets/Sheet.h"

#include <string>
#include <string_view>
#include <vector>

/// The list that a master's notes name. Paths are UTF-8.
namespace orvista {

/// \param project path of the master's project file
/// \param list as its notes have it: relative to the project
std::string masterListPath(const std::string& project, const std::string& list);
/// The same the other way round: how notes name a list; relative to the project's folder where that can be.
std::string notedListPath(const std::string& project, const std::string& list);

/// The displays of the list that are the master's: those without a project of their own and those that name
/// it. What is wrong with the list is added to `errors`; it cannot be used then.
/// \param path of the list
std::vector<FleetDisplay> masterDisplays(std::string_view bytes, const std::string& path,
                                         const std::string& project, SheetErrors& errors);

} // namespace orvista
