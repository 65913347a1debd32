#pragma once

#include <QKeyEvent>
#include <QToolButton>

namespace orvista {

/// A tool button that Enter presses as Space does, as it presses all other buttons of the program.
class EnterButton : public QToolButton {
public:
    using QToolButton::QToolButton;

protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
            click();
        else
            QToolButton::keyPressEvent(event);
    }
};

} // namespace orvista
