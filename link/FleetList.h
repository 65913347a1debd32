#pragma once

#include "link/DisplayAddress.h"

#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// The displays that one command works on, from a list that people keep. Texts and paths are UTF-8.
namespace orvista {

inline constexpr std::array<std::string_view, 4> fleetColumns{"name", "address", "port", "project"};
/// Their places.
namespace fleetColumn {
enum Place : std::size_t { Name, Address, Port, Project };
}

/// A row of the list as it stands there. Port and project may be empty.
struct FleetRow {
    std::size_t row; ///< as errors name it
    std::string name;
    std::string address;
    std::string port;
    std::string project;
};

struct FleetDisplay {
    std::string name; ///< can be a folder's on every platform
    DisplayAddress address;
    std::string project; ///< path of its project file; empty where projects do not matter
};

/// Why a row cannot be used.
struct FleetRefusal {
    std::size_t row;
    std::string_view column; ///< one of fleetColumns
    std::string text;        ///< a sentence; names the other row where two are in conflict
};

struct Fleet {
    std::vector<FleetDisplay> displays; ///< in the list's order
    std::vector<FleetRefusal> refusals; ///< none is to be contacted when there are any
};

/// What the rows themselves do not say.
struct FleetDefaults {
    std::string folder = {};   ///< the list's; projects are relative to it
    std::string project = {};  ///< path for rows without one; empty where there is none
    bool needsProjects = true; ///< refuses rows without a project
};

/// Refuses names that cannot be a folder's, addresses and ports that are none, and what is there twice: a
/// name in any case, or an address with its port.
Fleet fleetOf(std::span<const FleetRow> rows, const FleetDefaults& defaults);

} // namespace orvista
