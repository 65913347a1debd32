#pragma once

#include "mainwindow/Commands.h"

#include <QPointer>

namespace orvista {

class ProjectChanges;

/// The entries Undo and Redo of the menu Edit: their names tell the step. Their keys belong to the box that
/// has the focus where one can be typed into it, also when that box has nothing to undo.
class UndoEntries final : public QObject {
    Q_OBJECT
public:
    /// \param changes must outlive the entries
    UndoEntries(ProjectChanges& changes, Commands& commands, QWidget& window);

    std::vector<CommandRow> rows();
    /// Has the entries tell their steps, once they are there.
    void followSteps();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void watch(QWidget* focused);

    ProjectChanges& changes_;
    Commands& commands_;
    QWidget& window_;
    QPointer<QWidget> watched_; ///< what has the focus
};

} // namespace orvista
