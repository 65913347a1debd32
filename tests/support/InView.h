#pragma once

#include <QScrollArea>

namespace orvista::testing {

/// Scrolls whatever the widget lies in until the place in it is seen: a click beyond would meet another
/// widget.
inline void bringIntoView(const QWidget& widget, QPoint place) {
    for (QWidget* around = widget.parentWidget(); around; around = around->parentWidget()) {
        if (auto* const area = qobject_cast<QScrollArea*>(around)) {
            const QPoint within = widget.mapTo(area->widget(), place);
            area->ensureVisible(within.x(), within.y());
        }
    }
}

} // namespace orvista::testing
