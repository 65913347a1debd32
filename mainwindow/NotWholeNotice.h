#pragma once

#include "model/CommandEnabling.h"
#include "model/FileRemarks.h"

#include <QObject>
#include <QString>

#include <string>

namespace orvista {

class PanelDock;

namespace DocMgrModule {
class ProjectLifecycle;
}

/// Says in the dock that the project was opened from files that are not whole, until it is saved, and keeps
/// the device files that opening it replaces.
class NotWholeNotice final : public QObject {
    Q_OBJECT
public:
    /// \param recoveryFolder where copies of unsaved work are kept; may be empty
    NotWholeNotice(const DocMgrModule::ProjectLifecycle& lifecycle, PanelDock& dock,
                   const QString& recoveryFolder, QObject* parent);

    void beforeReplacing(const std::string& folder, const FileRemarks& remarks);
    void follow(ProjectTransition transition);

private:
    const DocMgrModule::ProjectLifecycle& lifecycle_;
    PanelDock& dock_;
    QString recoveryFolder_;
};

} // namespace orvista
