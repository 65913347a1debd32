#include "widgets/DropDownList.h"

#include <QKeyEvent>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <QWheelEvent>

#include <algorithm>

namespace orvista {

DropDownList::DropDownList(QWidget* parent) : QComboBox(parent) {
    setFocusPolicy(Qt::StrongFocus);
}

void DropDownList::keepWidth(int characters) {
    characters_ = characters;
    updateGeometry();
}

QSize DropDownList::sizeHint() const {
    return characters_ > 0 ? keptSize() : QComboBox::sizeHint();
}

QSize DropDownList::minimumSizeHint() const {
    return characters_ > 0 ? keptSize() : QComboBox::minimumSizeHint();
}

// Qt's own policy for it would build the popup at once, and most are never opened.
QSize DropDownList::keptSize() const {
    QStyleOptionComboBox option;
    initStyleOption(&option);
    const QSize content(characters_ * fontMetrics().horizontalAdvance(u'X'),
                        std::max(fontMetrics().height(), iconSize().height()) + 2);
    return style()->sizeFromContents(QStyle::CT_ComboBox, &option, content, this);
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
