#pragma once

#include "console/CommandFailure.h"
#include "console/FleetOptions.h"

#include <string>

namespace orvista::console {

/// Compares the projects of a list with what its displays hold; nothing is sent.
/// \param project for rows without one; empty for none
/// \throws CommandFailure
ExitStatus compareList(const FleetOptions& options, const std::string& project, bool notWhole);

} // namespace orvista::console
