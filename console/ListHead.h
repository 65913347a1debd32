#pragma once

#include "items/ProjectNotes.h"
#include "model/Project.h"
#include "model/UtcTime.h"
#include "sheets/AddressSheet.h"

namespace orvista::console {

/// What tells a list, or a book, of a project from another. \throws CommandFailure for a bitmap that cannot
/// be read
AddressHead listHead(const Project& project, const ProjectNotes& notes, UtcMoment moment);

} // namespace orvista::console
