#pragma once

#include "model/PathRules.h"
#include "model/People.h"

namespace orvista::DocMgrModule {

/// Where a reader or writer of files works and whom it tells of failures.
struct FileContext {
    const PathRules& paths;
    Messages& messages;
};

} // namespace orvista::DocMgrModule
