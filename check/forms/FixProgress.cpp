#include "check/forms/FixProgress.h"

#include <QCoreApplication>

namespace orvista {

namespace {

QString text(const char* english) {
    return QCoreApplication::translate("orvista::FixProgress", english);
}

} // namespace

FixProgress::FixProgress(QWidget& parent)
    : WorkProgress(parent, QStringLiteral("frmFixing"), text("Trying fixes\u2026")) {}

std::function<bool(std::size_t)> FixProgress::goesOn() {
    return [this](std::size_t made) {
        if (isDue())
            setLabelText(text("Trying fixes\u2026 %1 made").arg(made));
        return WorkProgress::goesOn();
    };
}

} // namespace orvista
