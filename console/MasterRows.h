#pragma once

#include "link/FleetList.h"

#include <string>
#include <vector>

/// Which rows of a master's own list a command works on.
namespace orvista::console {

/// The rows of these names, "--display", or of these addresses, "--to". An address with one name is where
/// that row's project goes in place of its own address. Nothing for a project that is no master and is given
/// no names. \param project empty for none \throws CommandFailure for a master without either, names without
/// a master, and addresses of no row or two
std::vector<FleetDisplay> masterRows(const std::string& project, const std::vector<std::string>& names,
                                     const std::vector<std::string>& addresses);

} // namespace orvista::console
