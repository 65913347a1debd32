#pragma once

#include "link/DisplayAddress.h"

#include <array>
#include <cstddef>
#include <memory>
#include <optional>
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

/// What the list's further columns say of a display: a value under each head.
class ListedValues {
public:
    using Names = std::vector<std::string>;

    ListedValues() = default;
    /// \param names the heads, one for all displays of a list
    /// \param cells one for each name
    ListedValues(std::shared_ptr<const Names> names, std::vector<std::string> cells);

    /// Null where there is no column of that name, in any case.
    const std::string* find(std::string_view name) const;
    /// As the list writes them.
    std::span<const std::string> names() const;

private:
    std::shared_ptr<const Names> names_;
    std::vector<std::string> cells_;
};

/// A row of the list as it stands there. Port and project may be empty.
struct FleetRow {
    std::size_t row; ///< as errors name it
    std::string name;
    std::string address;
    std::string port;
    std::string project;
    std::optional<int> columns = {};
    ListedValues values = {};
};

struct FleetDisplay {
    std::string name; ///< can be a folder's on every platform
    DisplayAddress address;
    std::string project;             ///< path of its project file; empty where projects do not matter
    std::optional<int> columns = {}; ///< dots across it, where the list says so
    ListedValues values = {};        ///< for the places of a master
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
