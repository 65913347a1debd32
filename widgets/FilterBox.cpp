#include "widgets/FilterBox.h"

#include "widgets/RowsTable.h"

#include <QKeyEvent>

namespace orvista {

FilterBox::FilterBox(QWidget* parent) : QLineEdit(parent) {
    setPlaceholderText(tr("Filter"));
    setClearButtonEnabled(true);
}

void FilterBox::passFocusTo(RowsTable& table) {
    table_ = &table;
}

bool FilterBox::event(QEvent* event) {
    // Otherwise Esc would be a short-cut of the window around the box.
    const bool isEscape =
        event->type() == QEvent::ShortcutOverride && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape;
    if (isEscape && !text().isEmpty()) {
        event->accept();
        return true;
    }
    return QLineEdit::event(event);
}

void FilterBox::keyPressEvent(QKeyEvent* event) {
    const int key = event->key();
    if (key == Qt::Key_Escape && !text().isEmpty()) {
        clear();
    } else if (table_ && (key == Qt::Key_Down || key == Qt::Key_Return || key == Qt::Key_Enter)) {
        table_->setFocus(Qt::OtherFocusReason);
        if (!table_->selectionModel()->hasSelection())
            table_->selectRow(0);
    } else {
        QLineEdit::keyPressEvent(event);
    }
}

} // namespace orvista
