#pragma once

#include <QString>

#include <chrono>

namespace orvista {

/// Where copies of unsaved work are kept, and when.
struct RecoverySettings {
    QString folder = {}; ///< empty: nothing is kept
    /// So long after the first change since the last copy the next one is written.
    std::chrono::milliseconds delay{2000};
};

} // namespace orvista
