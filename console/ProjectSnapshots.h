#pragma once

#include "console/CommandFailure.h"
#include "console/FleetTask.h"
#include "console/GivenProject.h"
#include "console/Interruption.h"
#include "link/ProjectSnapshot.h"

#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace orvista::console {

/// How projects are judged before they are sent or compared.
struct SnapshotWishes {
    bool check = false;    ///< refuse those in which the check finds an error
    bool notWhole = false; ///< take those of which something is lost, too
    bool tellEach = false; ///< tell of every error, not only of the first
    bool fingerprints = false;
};

/// The projects of displays, each as it was when the command began; of a master, each display's own. \see
/// writeSnapshot
class ProjectSnapshots {
public:
    /// Ends early when the command is interrupted: projects not reached have neither a path nor a refusal.
    /// \param scratch folder to write into, UTF-8
    /// \throws CommandFailure where that cannot be written to
    ProjectSnapshots(std::span<const FleetTask> tasks, std::string scratch, const SnapshotWishes& wishes,
                     const Interruption& interruption);

    /// Gives each task that work on its project's snapshot, or the reason why it is refused.
    void prepare(std::span<FleetTask> tasks, std::string_view work) const;
    /// What a command that needs all of the projects ends with; nothing where none is refused.
    std::optional<ExitStatus> worst() const { return worst_; }

private:
    using Key = std::pair<std::string, std::string>;

    struct Snapshot {
        std::string path;        ///< of the project file; empty where the project is refused
        std::string refusal;     ///< why
        std::string fingerprint; ///< empty where it is not asked for or cannot be known
    };

    GivenProject& given(const std::string& path);
    Key keyOf(const FleetDisplay& display) const;
    void takeSnapshot(const FleetDisplay& display);
    void write(const ProjectView& view, Snapshot& snapshot);
    void refuse(Snapshot& snapshot, const CommandFailure& why);

    std::string scratch_;
    SnapshotWishes wishes_;
    std::map<std::string, GivenProject> given_; ///< by path
    std::map<std::string, SimilarSnapshots> ofMasters_;
    std::map<Key, Snapshot> snapshots_; ///< by the project's path, and of a master by the display's name
    std::optional<ExitStatus> worst_;
};

} // namespace orvista::console
