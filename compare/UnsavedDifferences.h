#pragma once

#include "items/RecoveryFile.h"
#include "model/Item.h"
#include "model/PathRules.h"

#include <vector>

namespace orvista {

/// What unsaved work has that is not in its project file.
struct UnsavedDifferences {
    /// False where no project file can be read: then it is what differs from a new project.
    bool isSaved = false;
    bool hasSystemPage = false; ///< the settings of the System page
    std::vector<Item> items;    ///< address map, RegVar, CoilVar, STDMSG, ALTMSG
    std::vector<Item> notApplied;
};

/// Reads the project file, and writes nothing.
UnsavedDifferences unsavedDifferences(const UnsavedWork& work, const PathRules& paths);

} // namespace orvista
