#pragma once

#include "items/ProjectNotes.h"
#include "link/FleetList.h"
#include "model/Place.h"
#include "model/Project.h"
#include "script/Places.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// A master project: one project for many displays, whose places each display fills with its own values.
/// Which projects are masters is noted beside them; see ProjectNotes::masterList.
namespace orvista {

/// Why a place cannot be filled.
enum class PlaceFault {
    Unknown, ///< the list has no column of that name
    Width,   ///< the value is empty or too wide
    Value    ///< it holds a character that the display has not, a quote or a line end
};

struct PlaceError {
    Place place; ///< in the master
    PlaceFault fault = PlaceFault::Unknown;
    std::string display; ///< its name in the list
    std::string text;    ///< UTF-8, without a full stop: "'Nord' is 4 wide, its place 3"
    bool operator==(const PlaceError&) const = default;
};

/// How many errors of a display are listed; the rest are counted.
inline constexpr std::size_t mostPlaceErrors = 1000;
/// Of a value that has no width of its own: a bitmap's name, or an ON or OFF text.
inline constexpr std::size_t longestFreeValue = 200;

/// The project of one display.
struct Expansion {
    /// As the master, with the values in its places, and the display's address. Where a value cannot be taken
    /// the place shows its name, so that all else can be looked at; it is not for the display then.
    Project project;
    std::vector<PlaceError> errors; ///< in the order of the items; none: the project is ready
    std::size_t errorsNotListed = 0;
};

/// Expands one project for many displays: its places are looked for once.
class Master {
public:
    explicit Master(Project project);

    const Project& project() const { return project_; }
    Expansion expand(const FleetDisplay& display) const;
    /// The master itself, on no display: each place counts its width and shows its name. Bitmaps that are
    /// places keep theirs; see MasterBitmaps.
    Project itself() const;
    /// The names of its places in small letters, each once, in their order.
    std::vector<std::string> names() const;
    /// The messages and variables that have places, each once. What a fix made of a display's text would be
    /// wrong for all others.
    std::vector<Item> items() const;
    /// Where in the master lies what is found in an expansion, or in itself(): lines are the same, columns
    /// are not. What begins within a value begins at its place.
    Place inMaster(const Place& expanded) const;

private:
    /// A text with places.
    struct Text {
        Item item;
        std::string BooleanVariable::*member = nullptr; ///< null for a script
        std::vector<TextPlace> places;
    };
    std::string& textOf(Project& project, const Text& text) const;

    Project project_;
    std::vector<Text> texts_;
};

/// The same for one display. \param project a master
Expansion expand(const Project& project, const FleetDisplay& display);

/// Why a project is not to be sent whose notes could not be read though they may say that it is a master: its
/// places would go as they are typed. A sentence without a full stop; empty where nothing is against it.
/// \param path of the project, as the user is to see it
std::string hiddenMasterFault(const std::string& path, const Project& project, bool mayHideMaster);

/// What is noted of the display's own project: the same, but for the master's list. The list's columns count
/// before those noted, and where the notes do not name the display the list does.
ProjectNotes expandedNotes(ProjectNotes notes, const FleetDisplay& display);

/// An expansion of one message alone: its script, and what keeps places from being filled.
std::pair<std::string, std::vector<PlaceError>> expandScript(Item message, std::string_view script,
                                                             const FleetDisplay& display);
/// The script as the master itself has it.
std::string scriptWithNames(std::string_view script);

} // namespace orvista
