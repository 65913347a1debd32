#pragma once

#include "console/CommandFailure.h"
#include "display/FolderBitmaps.h"
#include "items/Master.h"
#include "items/MasterBitmaps.h"
#include "items/ProjectNotes.h"
#include "model/Project.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

/// Projects that commands are given, each with the notes beside it; those of a master may make it one.
namespace orvista::console {

/// What a command works on: a project as it is, a master itself, or the project of one of its displays.
struct ProjectView {
    std::string path;  ///< of the project that was given
    std::string title; ///< "PLANT.orx", "PLANT.orx (Line 17)"
    Project project;
    ProjectNotes notes;                       ///< of this project
    bool isMaster = false;                    ///< of a master: itself, or for a display
    const FleetDisplay* display = nullptr;    ///< null but for the project of a display
    std::vector<PlaceError> placeErrors = {}; ///< what keeps it from being made
    std::size_t errorsNotListed = 0;
};

/// The bitmaps of a view's folder; of a master with frames for those that are places.
class ViewBitmaps {
public:
    explicit ViewBitmaps(const ProjectView& view)
        : folder_(view.project.ProjPath), named_(folder_), isMaster_(view.isMaster) {}

    const BitmapProvider& provider() const {
        return isMaster_ ? static_cast<const BitmapProvider&>(named_) : folder_;
    }

private:
    FolderBitmaps folder_;
    MasterBitmaps named_;
    bool isMaster_;
};

/// Tells of each place that cannot be filled. \throws CommandFailure where there is one
void expectFilled(const ProjectView& view);

/// The displays of that list whose master the project is. \throws CommandFailure
std::vector<FleetDisplay> displaysOfList(const std::string& list, const std::string& project);
/// Those of these names, which may be joined by commas; "all" for all.
/// \throws CommandFailure for a name that none has
std::vector<FleetDisplay> displaysNamed(const std::vector<std::string>& names,
                                        const std::vector<FleetDisplay>& displays);
/// The list of a master; empty for other projects. What is wrong with the notes is not told.
std::string listOfMaster(const std::string& project);

class GivenProject {
public:
    /// Reads the notes; what is wrong with them is told.
    GivenProject(std::string path, Project project);

    /// As it was read: in a master, with its places.
    const Project& project() const { return project_; }
    const ProjectNotes& notes() const { return notes_; }
    /// Null for a project that is none.
    const Master* master() const { return master_ ? &*master_ : nullptr; }
    /// \throws CommandFailure for a project that is none
    const Master& expectMaster() const;

    /// Its places would be sent as they are typed.
    /// \throws CommandFailure for a project with places of whose notes too little could be read to tell
    void expectNoHiddenMaster() const;

    /// Those of its list; read when they are asked for first.
    /// \throws CommandFailure, also for a project that is no master
    const std::vector<FleetDisplay>& displays();
    /// Takes the displays of another list. Paths as FleetDefaults have them. \throws CommandFailure
    void readList(const std::string& path);

    /// As a command without displays means it: of a master, with the names in its places.
    ProjectView itself() const;
    ProjectView of(const FleetDisplay& display) const;
    /// Works on the projects of the displays named, one after the other; without names on the project itself,
    /// and for "all" on one that is no master, too. Where one of several fails that is told, and the others
    /// go on. \returns the worst status \throws CommandFailure
    ExitStatus eachView(const std::vector<std::string>& names,
                        const std::function<ExitStatus(const ProjectView&)>& work);

private:
    std::string path_;
    Project project_;
    ProjectNotes notes_;
    bool mayHideMaster_ = false;
    std::optional<Master> master_;
    std::optional<std::vector<FleetDisplay>> displays_;
};

/// The option "--display".
void addDisplayNames(CLI::App& command, std::vector<std::string>& names);
/// Whether they may stand for more than one display.
bool mayNameSeveral(const std::vector<std::string>& names);
/// Where several displays each have a file of their own: "level.png" is "level-Line 17.png".
std::string fileOfDisplay(const std::string& file, const std::vector<std::string>& names,
                          const ProjectView& view);

} // namespace orvista::console
