#pragma once

#include "model/ProjectLifecycle.h"

#include <QObject>

class QWidget;

namespace orvista {

class PanelDock;
class ReloadOffer;

/// What files do to the open project besides the File menu: they are dropped on the window, and change on the
/// disk.
class FileTools final : public QObject {
    Q_OBJECT
public:
    /// All must outlive the tools.
    FileTools(DocMgrModule::ProjectLifecycle& lifecycle, PanelDock& dock, QWidget& window);

    void follow(ProjectTransition transition);
    /// The user came back to the window.
    void windowActivated();

private:
    bool takesFile(const QString& path) const;
    void openFile(const QString& path);

    DocMgrModule::ProjectLifecycle& lifecycle_;
    ReloadOffer* reload_;
};

} // namespace orvista
