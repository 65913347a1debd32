#include "mainwindow/UndoCommands.h"

#include "mainwindow/ProjectChanges.h"

#include <QAbstractSpinBox>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextEdit>

#include <algorithm>
#include <array>

namespace orvista {

namespace {

/// What undoes and redoes where keys go to `focused`: text that can be typed into it, or that is only shown
/// there. Null for everything else.
QWidget* textOf(QWidget* focused) {
    if (qobject_cast<QLineEdit*>(focused) || qobject_cast<QPlainTextEdit*>(focused) ||
        qobject_cast<QTextEdit*>(focused))
        return focused;
    // These take the keys for the box inside them.
    if (qobject_cast<QComboBox*>(focused) || qobject_cast<QAbstractSpinBox*>(focused))
        return focused->findChild<QLineEdit*>();
    return nullptr;
}

/// Ends the entry's present caption with each name that the signal brings.
void nameStep(QAction& entry, const QUndoStack& steps, void (QUndoStack::*nameChanged)(const QString&)) {
    QObject::connect(&steps, nameChanged, &entry, [&entry, word = entry.text()](const QString& step) {
        entry.setText(step.isEmpty() ? word : word + u' ' + step);
    });
}

bool isTypedInto(const QWidget& text) {
    return !text.property("readOnly").toBool();
}

} // namespace

UndoCommands::UndoCommands(const ProjectChanges& changes, QWidget& window)
    : QObject(&window), changes_(changes), window_(window) {
    connect(qApp, &QApplication::focusChanged, this,
            [this](QWidget* /*before*/, QWidget* now) { watch(now); });
}

void UndoCommands::nameUndoStep(QAction& entry) const {
    nameStep(entry, changes_.steps(), &QUndoStack::undoTextChanged);
}

void UndoCommands::nameRedoStep(QAction& entry) const {
    nameStep(entry, changes_.steps(), &QUndoStack::redoTextChanged);
}

void UndoCommands::watch(QWidget* focused) {
    if (watched_)
        watched_->removeEventFilter(this);
    watched_ = focused && window_.isAncestorOf(focused) && textOf(focused) ? focused : nullptr;
    if (watched_)
        watched_->installEventFilter(this);
}

bool UndoCommands::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::ShortcutOverride && event->type() != QEvent::KeyPress)
        return QObject::eventFilter(watched, event);
    const QKeyCombination key = static_cast<QKeyEvent*>(event)->keyCombination();
    constexpr std::array keys{undoKey, redoKey, otherRedoKey};
    QWidget* const text = textOf(static_cast<QWidget*>(watched));
    if (!text || std::find(keys.begin(), keys.end(), key) == keys.end())
        return QObject::eventFilter(watched, event);
    if (event->type() == QEvent::ShortcutOverride) {
        // An accepted one comes back as a key press of the box, any other is the entry's.
        event->setAccepted(isTypedInto(*text));
        return true;
    }
    if (isTypedInto(*text))
        // All three, since the systems differ in which of them their boxes know.
        QMetaObject::invokeMethod(text, key == undoKey ? "undo" : "redo");
    return true;
}

} // namespace orvista
