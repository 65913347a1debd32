#pragma once

#include "model/ProjectLifecycle.h"

#include <QObject>

class QWidget;

namespace orvista {

/// Tools > Upload to Several Displays…: saves first, as Upload does, then hands the work to `orvista`, which
/// lies beside the program.
class FleetCommands final : public QObject {
    Q_OBJECT
public:
    /// Both must outlive the command.
    FleetCommands(DocMgrModule::ProjectLifecycle& lifecycle, QWidget& window);

    void miToolsSeveral_Click();

private:
    DocMgrModule::ProjectLifecycle& lifecycle_;
    QWidget& window_;
};

} // namespace orvista
