#pragma once

#include "model/PathRules.h"
#include "model/People.h"

#include <string>

namespace orvista::DocMgrModule {

/// When a file counts as written: when the system has taken its bytes, or once they are on the disk.
enum class Durability { Cached, OnDisk };

/// Where a reader or writer of files works and whom it tells of failures.
struct FileContext {
    const PathRules& paths;
    Messages& messages;
    std::string projectFile = {}; ///< UTF-8; never written as a device file, whatever leads to it
    Durability durability = Durability::Cached; ///< of the device files
};

} // namespace orvista::DocMgrModule
