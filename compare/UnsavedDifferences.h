#pragma once

#include "items/RecoveryFile.h"
#include "model/PathRules.h"

#include <string>
#include <vector>

namespace orvista {

/// What unsaved work has that is not in its project file.
struct UnsavedDifferences {
    /// False where no project file can be read: then it is what differs from a new project.
    bool isSaved = false;
    /// In the order system page (as systemPageName), address map, RegVar, CoilVar, STDMSG, ALTMSG.
    std::vector<std::string> items;
    std::vector<std::string> notApplied;
};

/// How the settings of the System page are named among the items.
inline constexpr const char* systemPageName = "System";

/// Reads the project file, and writes nothing.
UnsavedDifferences unsavedDifferences(const UnsavedWork& work, const PathRules& paths);

} // namespace orvista
