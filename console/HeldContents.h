#pragma once

#include "compare/DisplayContents.h"
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

    const DisplayContents& contents() const { return *contents_; }

private:
    std::optional<ScratchFolder> fetched_; ///< of a display
    std::optional<DisplayContents> contents_;
};

} // namespace orvista::console
