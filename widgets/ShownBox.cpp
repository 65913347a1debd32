#include "widgets/ShownBox.h"

#include <QEvent>

namespace orvista {

ShownBox::ShownBox(QWidget* parent) : DeviceLineEdit(parent) {
    setReadOnly(true);
    takeWindowBackground();
}

void ShownBox::changeEvent(QEvent* event) {
    DeviceLineEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        takeWindowBackground();
}

void ShownBox::takeWindowBackground() {
    if (palette().base() == palette().window())
        return;
    // Only this one role is the box's own; all others follow the program's palette.
    QPalette own;
    own.setBrush(QPalette::Base, palette().window());
    setPalette(own);
}

} // namespace orvista
