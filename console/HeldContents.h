#pragma once

#include "compare/DisplayContents.h"
#include "console/GivenProject.h"
#include "model/ScratchFolder.h"

#include <optional>
#include <string>

namespace orvista::console {

/// What a project or a display holds. A project counts as saving it would write it; what is fetched of a
/// display lies in a folder that goes with this.
class HeldContents {
public:
    /// \param argument a project file, which ends in .orx, or a display
    /// \param notWhole whether a project that is not whole will do
    /// \throws CommandFailure, std::system_error for a file that cannot be read
    HeldContents(const std::string& argument, bool notWhole);

    /// The project; null for a display.
    GivenProject* given() { return given_ ? &*given_ : nullptr; }
    bool isMaster() const { return given_ && given_->master() != nullptr; }
    /// Of a master itself, its places show their names.
    const DisplayContents& contents() const { return *contents_; }

private:
    std::optional<ScratchFolder> fetched_; ///< of a display
    std::optional<GivenProject> given_;
    std::optional<DisplayContents> contents_;
};

/// What the project of a view writes. \throws CommandFailure for one that cannot be made
DisplayContents contentsOf(const ProjectView& view);

} // namespace orvista::console
