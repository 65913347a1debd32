#pragma once

#include <QToolBar>

namespace orvista {

class Commands;

/// The toolbar `ToolbarMain`: five buttons, each known by its key and bound to a command.
class ToolBar final : public QToolBar {
    Q_OBJECT
public:
    explicit ToolBar(Commands& commands, QWidget* parent = nullptr);

    /// Runs the command of that button; any other key does nothing.
    void run(const QString& key);

signals:
    /// \param key "NEW", "OPEN", "SAVE", "UPLOAD" or "DOWNLOAD"
    void ButtonClick(const QString& key);

private:
    Commands& commands_;
};

} // namespace orvista
