#pragma once

#include <QProgressDialog>

#include <cstddef>
#include <functional>

namespace orvista {

/// Shown while fixes are tried, when that takes long; "Stop" ends it.
class FixProgress final : public QProgressDialog {
public:
    /// \param parent whose window waits
    explicit FixProgress(QWidget& parent);

    /// What is asked before each fix.
    std::function<bool(std::size_t)> goesOn();
};

} // namespace orvista
