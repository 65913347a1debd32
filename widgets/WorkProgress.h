#pragma once

#include <QDeadlineTimer>
#include <QProgressDialog>

namespace orvista {

/// Shown while the window works on something, when that takes long; "Stop" ends it.
class WorkProgress : public QProgressDialog {
public:
    /// \param parent whose window waits
    WorkProgress(QWidget& parent, const QString& name, const QString& text);

    /// To be asked before each step.
    bool goesOn();

protected:
    /// With the next step it is shown, or looks again for a click on Stop.
    bool isDue() const { return next_.hasExpired(); }

private:
    QDeadlineTimer next_;
};

} // namespace orvista
