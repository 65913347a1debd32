#pragma once

#include "link/FleetList.h"

#include <initializer_list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace orvista::testing {

/// A row of a list with these values.
inline FleetDisplay listedDisplay(const std::string& name, const std::string& host,
                                  const std::vector<std::pair<std::string, std::string>>& values) {
    ListedValues::Names heads;
    std::vector<std::string> cells;
    for (const auto& [head, cell] : values) {
        heads.push_back(head);
        cells.push_back(cell);
    }
    FleetDisplay display;
    display.name = name;
    display.address = {host, fileTransfer.port};
    display.values = {std::make_shared<const ListedValues::Names>(std::move(heads)), std::move(cells)};
    return display;
}

} // namespace orvista::testing
