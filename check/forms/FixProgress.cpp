#include "check/forms/FixProgress.h"

#include <QCoreApplication>

namespace orvista {

FixProgress::FixProgress(QWidget& parent)
    : QProgressDialog(QCoreApplication::translate("orvista::FixProgress", "Trying fixes\u2026"),
                      QCoreApplication::translate("orvista::FixProgress", "Stop"), 0, 0, parent.window()) {
    setObjectName(QStringLiteral("frmFixing"));
    setWindowModality(Qt::WindowModal);
}

std::function<bool(std::size_t)> FixProgress::goesOn() {
    return [this](std::size_t) {
        setValue(0);
        return !wasCanceled();
    };
}

} // namespace orvista
