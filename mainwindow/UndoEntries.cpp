#include "mainwindow/UndoEntries.h"

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

constexpr QKeyCombination undoKey = Qt::CTRL | Qt::Key_Z;
constexpr QKeyCombination redoKey = Qt::CTRL | Qt::Key_Y;
constexpr QKeyCombination otherRedoKey = Qt::CTRL | Qt::SHIFT | Qt::Key_Z;

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

bool isTypedInto(const QWidget& text) {
    return !text.property("readOnly").toBool();
}

} // namespace

UndoEntries::UndoEntries(ProjectChanges& changes, Commands& commands, QWidget& window)
    : QObject(&window), changes_(changes), commands_(commands), window_(window) {
    connect(qApp, &QApplication::focusChanged, this,
            [this](QWidget* /*before*/, QWidget* now) { watch(now); });
}

std::vector<CommandRow> UndoEntries::rows() {
    return {{.name = "miEditUndo",
             .caption = tr("Undo"),
             .shortcut = undoKey,
             .toolTip = tr("Take back the last change of the project"),
             .enabling = EnablingRules::projectWork,
             .run = [this] { changes_.undo(); }},
            {.name = "miEditRedo",
             .caption = tr("Redo"),
             .shortcut = redoKey,
             .toolTip = tr("Make the change again that was taken back"),
             .enabling = EnablingRules::projectWork,
             .run = [this] { changes_.redo(); },
             .otherKey = otherRedoKey}};
}

void UndoEntries::followSteps() {
    const auto name = [this](const char* entry, const QString& word) {
        return [action = &commands_.action(entry), word](const QString& step) {
            action->setText(step.isEmpty() ? word : word + u' ' + step);
        };
    };
    const QUndoStack& steps = changes_.steps();
    connect(&steps, &QUndoStack::undoTextChanged, this, name("miEditUndo", tr("Undo")));
    connect(&steps, &QUndoStack::redoTextChanged, this, name("miEditRedo", tr("Redo")));
}

void UndoEntries::watch(QWidget* focused) {
    if (watched_)
        watched_->removeEventFilter(this);
    watched_ = focused && window_.isAncestorOf(focused) && textOf(focused) ? focused : nullptr;
    if (watched_)
        watched_->installEventFilter(this);
}

bool UndoEntries::eventFilter(QObject* watched, QEvent* event) {
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
