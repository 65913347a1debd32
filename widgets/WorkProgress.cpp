#include "widgets/WorkProgress.h"

#include <QCoreApplication>

#include <chrono>

namespace orvista {

namespace {

constexpr std::chrono::milliseconds showAfter{500};
constexpr std::chrono::milliseconds lookEvery{50};

} // namespace

WorkProgress::WorkProgress(QWidget& parent, const QString& name, const QString& text)
    : QProgressDialog(text, QCoreApplication::translate("orvista::WorkProgress", "Stop"), 0, 0,
                      parent.window()) {
    setObjectName(name);
    setWindowModality(Qt::WindowModal);
    next_.setRemainingTime(showAfter);
}

bool WorkProgress::goesOn() {
    if (isDue()) {
        // Of itself it would come when its value changes, but nobody knows how much there is to do.
        show();
        QCoreApplication::processEvents();
        next_.setRemainingTime(lookEvery);
    }
    return !wasCanceled();
}

} // namespace orvista
