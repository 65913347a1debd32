#pragma once

#include "compare/FileComparison.h"
#include "compare/ScriptComparison.h"
#include "model/Project.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// What differs between two projects for the display: what is read of its files, and the bitmaps. The start
/// of the regular messages and the play list are never read.
namespace orvista {

/// A start address that the readers read.
struct AddressField {
    std::string_view name;
    std::int32_t Project::*start;
};
inline constexpr AddressField floatAddressField{"AnalogInput", &Project::AnalogInput};
inline constexpr AddressField booleanAddressField{"DigitalInput", &Project::DigitalInput};
inline constexpr AddressField emergencyAddressField{"AlertMessage", &Project::AlertMessage};
inline constexpr std::array addressFields{floatAddressField, booleanAddressField, emergencyAddressField};

/// An address, or a setting of a variable.
struct FieldDifference {
    std::string_view field; ///< of addressFields; "default", "width", "precision", "on" or "off"
    std::string before;     ///< device bytes
    std::string after;
    bool operator==(const FieldDifference&) const = default;
};

struct ItemDifference {
    std::string item;                    ///< addressMapName, "RegVar3", "CoilVar3", "STDMSG12" or "ALTMSG2"
    std::vector<FieldDifference> fields; ///< of what is no message
    std::vector<ComparedLine> lines;     ///< of a message, the same ones included
    bool operator==(const ItemDifference&) const = default;
};

struct ProjectDifferences {
    std::vector<ItemDifference> items; ///< in the order address map, RegVar, CoilVar, STDMSG, ALTMSG
    std::vector<FileDifference> bitmaps;
    bool none() const { return items.empty() && bitmaps.empty(); }
};

std::vector<ItemDifference> compareItems(const Project& before, const Project& after);

/// One side of a comparison.
struct ComparedProject {
    const Project& project;
    std::vector<NamedFile> bitmaps;
};

/// \throws std::system_error as compareFiles does
ProjectDifferences compareProjects(const ComparedProject& before, const ComparedProject& after);

} // namespace orvista
