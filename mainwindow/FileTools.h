#pragma once

#include "mainwindow/SheetTools.h"

#include <QObject>

namespace orvista {

class ReloadOffer;

/// What comes from files and goes to files besides the File menu: tables, files that are dropped on the
/// window, and a project that changes on the disk.
class FileTools final : public QObject {
    Q_OBJECT
public:
    /// All must outlive the tools.
    FileTools(DocMgrModule::ProjectLifecycle& lifecycle, ProjectChanges& changes, const Commands& commands,
              PanelDock& dock, QWidget& window);

    std::vector<CommandRow> toolsEntries() { return sheets_->rows(); }

    void follow(ProjectTransition transition);
    /// The user came back to the window.
    void windowActivated();

signals:
    /// Messages or variables came from a table in that folder (UTF-8).
    void itemsCameFrom(const std::string& folder);

private:
    bool takesFile(const QString& path) const;
    void take(const QString& path);

    DocMgrModule::ProjectLifecycle& lifecycle_;
    const Commands& commands_;
    SheetTools* sheets_;
    ReloadOffer* reload_;
};

} // namespace orvista
