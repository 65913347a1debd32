#pragma once

#include <QKeyCombination>
#include <QObject>
#include <QPointer>

class QAction;

namespace orvista {

class ProjectChanges;

/// What Undo and Redo of the menu Edit show besides: their captions name the step. Their keys belong to the
/// box that has the focus where one can be typed into it, also when that box has nothing to undo.
class UndoCommands final : public QObject {
    Q_OBJECT
public:
    static constexpr QKeyCombination undoKey = Qt::CTRL | Qt::Key_Z;
    static constexpr QKeyCombination redoKey = Qt::CTRL | Qt::Key_Y;
    static constexpr QKeyCombination otherRedoKey = Qt::CTRL | Qt::SHIFT | Qt::Key_Z;

    /// \param changes must outlive the commands
    UndoCommands(const ProjectChanges& changes, QWidget& window);

    /// Has the entry's caption end with the step that it undoes.
    void nameUndoStep(QAction& entry) const;
    /// Has the entry's caption end with the step that it redoes.
    void nameRedoStep(QAction& entry) const;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void watch(QWidget* focused);

    const ProjectChanges& changes_;
    QWidget& window_;
    QPointer<QWidget> watched_; ///< what has the focus
};

} // namespace orvista
