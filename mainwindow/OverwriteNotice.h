#pragma once

#include <QObject>
#include <QString>

#include <string>

namespace orvista {

class PanelDock;

/// Keeps what another program has written to the project's file before a save replaces it, and says so in
/// the dock.
class OverwriteNotice final : public QObject {
    Q_OBJECT
public:
    /// \param recoveryFolder where copies of unsaved work are kept; may be empty
    OverwriteNotice(PanelDock& dock, const QString& recoveryFolder, QObject* parent);

    /// \param path of the file as on the disk, UTF-8
    void keep(const std::string& path);

private:
    PanelDock& dock_;
    QString recoveryFolder_;
};

} // namespace orvista
