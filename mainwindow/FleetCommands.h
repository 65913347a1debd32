#pragma once

#include "model/ProjectLifecycle.h"

#include <QObject>

class QWidget;

namespace orvista {

class OpenMaster;
class OpenNotes;

/// Tools > Upload to Several Displays…: saves first, as Upload does, then hands the work to `orvista`, which
/// lies beside the program. Of a master each display of its list gets its own.
class FleetCommands final : public QObject {
    Q_OBJECT
public:
    /// All must outlive the command.
    FleetCommands(DocMgrModule::ProjectLifecycle& lifecycle, OpenNotes& notes, OpenMaster& master,
                  QWidget& window);

    void miToolsSeveral_Click();

private:
    DocMgrModule::ProjectLifecycle& lifecycle_;
    OpenNotes& notes_;
    OpenMaster& master_;
    QWidget& window_;
};

} // namespace orvista
