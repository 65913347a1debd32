#include "check/forms/FixProgress.h"

#include <QCoreApplication>

#include <chrono>

namespace orvista {

namespace {

constexpr std::chrono::milliseconds showAfter{500};
constexpr std::chrono::milliseconds lookEvery{50};

QString text(const char* english) {
    return QCoreApplication::translate("orvista::FixProgress", english);
}

} // namespace

FixProgress::FixProgress(QWidget& parent)
    : QProgressDialog(text("Trying fixes\u2026"), text("Stop"), 0, 0, parent.window()) {
    setObjectName(QStringLiteral("frmFixing"));
    setWindowModality(Qt::WindowModal);
    next_.setRemainingTime(showAfter);
}

std::function<bool(std::size_t)> FixProgress::goesOn() {
    return [this](std::size_t made) {
        if (next_.hasExpired())
            look(made);
        return !wasCanceled();
    };
}

void FixProgress::look(std::size_t made) {
    setLabelText(text("Trying fixes\u2026 %1 made").arg(made));
    // Of itself it would come when its value changes, but nobody knows how much there is to do.
    show();
    QCoreApplication::processEvents();
    next_.setRemainingTime(lookEvery);
}

} // namespace orvista
