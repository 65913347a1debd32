#include "widgets/DropDownList.h"

#include <QKeyEvent>
#include <QWheelEvent>

namespace orvista {

DropDownList::DropDownList(QWidget* parent) : QComboBox(parent) {
    setFocusPolicy(Qt::StrongFocus);
}

bool DropDownList::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride && static_cast<QKeyEvent*>(event)->key() == Qt::Key_F4) {
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
