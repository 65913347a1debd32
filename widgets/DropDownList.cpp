#include "widgets/DropDownList.h"

#include <QKeyEvent>
#include <QWheelEvent>

namespace orvista {

DropDownList::DropDownList(QWidget* parent) : QComboBox(parent) {
    setFocusPolicy(Qt::StrongFocus);
}

bool DropDownList::event(QEvent* event) {
    // F4 opens the list.
    const auto* const key =
        event->type() == QEvent::ShortcutOverride ? static_cast<QKeyEvent*>(event) : nullptr;
    if (key && key->key() == Qt::Key_F4 && key->modifiers() == Qt::NoModifier) {
        event->accept();
        return true;
    }
    return QComboBox::event(event);
}

void DropDownList::wheelEvent(QWheelEvent* event) {
    if (hasFocus())
        QComboBox::wheelEvent(event);
    else
        event->ignore(); // lets the page behind scroll
}

} // namespace orvista
