#pragma once

#include "widgets/WorkProgress.h"

#include <cstddef>
#include <functional>

namespace orvista {

/// Shown while fixes are tried.
class FixProgress final : public WorkProgress {
public:
    /// \param parent whose window waits
    explicit FixProgress(QWidget& parent);

    /// What is asked before each fix, with how many were made.
    std::function<bool(std::size_t)> goesOn();
};

} // namespace orvista
