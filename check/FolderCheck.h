#pragma once

#include "check/MasterCheck.h"
#include "check/ProjectCheck.h"
#include "display/FolderBitmaps.h"
#include "items/MasterView.h"

#include <memory>
#include <optional>
#include <string>

namespace orvista {

/// A check that is made again and again, with the bitmaps of the folder that the project lies in by then.
class FolderCheck {
public:
    /// As ProjectCheck::check().
    Findings check(const Project& project, int columns, Notes notes = Notes::LeftOut);
    /// The same of what is shown of a project. Findings in a master are at their places there.
    Findings check(const MasterView& view, int columns, Notes notes = Notes::LeftOut);
    /// Those of the project's folder; valid until they are asked for after the project has moved.
    const BitmapProvider& bitmaps(const Project& project);

private:
    ProjectCheck check_;
    std::string folder_;
    std::optional<FolderBitmaps> bitmaps_;
    std::shared_ptr<const Master> master_; ///< that was checked last
    std::optional<MasterCheck> masterCheck_;
};

} // namespace orvista
