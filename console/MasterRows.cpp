#include "console/MasterRows.h"

#include "console/CommandFailure.h"
#include "console/Displays.h"
#include "console/GivenProject.h"
#include "model/Text.h"

#include <algorithm>

namespace orvista::console {

namespace {

/// \throws CommandFailure unless there is exactly one
FleetDisplay rowAt(const std::string& text, const std::vector<FleetDisplay>& displays,
                   const std::string& list) {
    const DisplayAddress address = transferAddress(text);
    std::vector<FleetDisplay> found;
    for (const FleetDisplay& display : displays) {
        if (!equalsIgnoringCase(display.address.host, address.host))
            continue;
        if (display.address.port == address.port)
            return display;
        found.push_back(display);
    }
    // The port may be left out where the list has one display there.
    const bool hasPort =
        !equalsIgnoringCase(text, address.host) && !equalsIgnoringCase(text, "[" + address.host + "]");
    if (hasPort || found.empty())
        throw CommandFailure(ExitStatus::Unusable, list + " has no display at " + text);
    if (found.size() > 1)
        throw CommandFailure(ExitStatus::Unusable, list + " has more than one display at " + text);
    return found.front();
}

} // namespace

std::vector<FleetDisplay> masterRows(const std::string& project, const std::vector<std::string>& names,
                                     const std::vector<std::string>& addresses) {
    const std::string list = project.empty() ? std::string() : listOfMaster(project);
    if (list.empty() && names.empty())
        return {};
    if (list.empty())
        throw CommandFailure(ExitStatus::Unusable, (project.empty() ? "the project" : project) +
                                                       " is not a master: --display takes one");
    if (names.empty() && addresses.empty())
        throw CommandFailure(ExitStatus::Unusable,
                             project +
                                 " is a master: say for which displays, with --display, --to or --list");
    const std::vector<FleetDisplay> displays = displaysOfList(list, project);
    std::vector<FleetDisplay> rows;
    if (!names.empty())
        rows = displaysNamed(names, displays);
    else
        std::ranges::transform(addresses, std::back_inserter(rows),
                               [&](const std::string& text) { return rowAt(text, displays, list); });
    if (names.empty() || addresses.empty())
        return rows;
    if (rows.size() != 1 || addresses.size() != 1)
        throw CommandFailure(ExitStatus::Unusable, "--to and --display together take one of each");
    rows.front().address = transferAddress(addresses.front());
    return rows;
}

} // namespace orvista::console
