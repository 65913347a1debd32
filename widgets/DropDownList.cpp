#include "widgets/DropDownList.h"

#include <QWheelEvent>

namespace orvista {

DropDownList::DropDownList(QWidget* parent) : QComboBox(parent) {
    setFocusPolicy(Qt::StrongFocus);
}

void DropDownList::wheelEvent(QWheelEvent* event) {
    if (hasFocus())
        QComboBox::wheelEvent(event);
    else
        event->ignore(); // lets the page behind scroll
}

} // namespace orvista
