#pragma once

#include <QApplication>
#include <QClipboard>
#include <QDropEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QTest>
#include <QWheelEvent>
#include <QWidget>

#include <string>

/// What users and their devices do to a box.
namespace orvista::testing {

inline std::string everyByte() {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte)
        bytes.push_back(static_cast<char>(byte));
    return bytes;
}

/// One key press that brings `text`, as a keyboard layout with such a key would.
inline void typeText(QWidget& box, const QString& text) {
    QKeyEvent press(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, text);
    QCoreApplication::sendEvent(&box, &press);
    QKeyEvent release(QEvent::KeyRelease, Qt::Key_unknown, Qt::NoModifier, text);
    QCoreApplication::sendEvent(&box, &release);
}

inline void pasteInto(QWidget& box, const QString& text) {
    QApplication::clipboard()->setText(text);
    QTest::keySequence(&box, QKeySequence::Paste);
}

inline void dropOnto(QWidget& box, const QString& text) {
    QMimeData data;
    data.setText(text);
    const QPoint middle = box.rect().center();
    QDragEnterEvent enter(middle, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&box, &enter);
    QDropEvent drop(middle, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&box, &drop);
}

/// What an input method does: shows the text in progress, then hands it over.
inline void compose(QWidget& box, const QString& text) {
    QInputMethodEvent progress(text, {});
    QCoreApplication::sendEvent(&box, &progress);
    QInputMethodEvent commit;
    commit.setCommitString(text);
    QCoreApplication::sendEvent(&box, &commit);
}

/// One notch of the mouse wheel, away from the user for a positive `delta`.
inline void turnWheelOver(QWidget& widget, int delta) {
    const QPointF middle = widget.rect().center();
    QWheelEvent turn(middle, widget.mapToGlobal(middle), {}, {0, delta}, Qt::NoButton, Qt::NoModifier,
                     Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&widget, &turn);
}

} // namespace orvista::testing
