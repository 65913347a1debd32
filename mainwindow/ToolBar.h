#pragma once

#include "model/CommandStates.h"

#include <QToolBar>

namespace orvista {

/// The toolbar `ToolbarMain`: five buttons, each known by its key.
class ToolBar final : public QToolBar {
    Q_OBJECT
public:
    explicit ToolBar(QWidget* parent = nullptr);

    void showCommandStates(const CommandStates& states);

signals:
    /// \param key "NEW", "OPEN", "SAVE", "UPLOAD" or "DOWNLOAD"
    void ButtonClick(const QString& key);

private:
    QAction* save_ = nullptr;
    QAction* upload_ = nullptr;
};

} // namespace orvista
