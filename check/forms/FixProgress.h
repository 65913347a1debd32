#pragma once

#include <QDeadlineTimer>
#include <QProgressDialog>

#include <cstddef>
#include <functional>

namespace orvista {

/// Shown while fixes are tried, when that takes long; "Stop" ends it.
class FixProgress final : public QProgressDialog {
public:
    /// \param parent whose window waits
    explicit FixProgress(QWidget& parent);

    /// What is asked before each fix, with the number of those made.
    std::function<bool(std::size_t)> goesOn();

private:
    void look(std::size_t made);

    QDeadlineTimer next_; ///< when the user is looked after
};

} // namespace orvista
