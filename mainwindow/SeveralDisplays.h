#pragma once

#include "model/ProjectLifecycle.h"

class QWidget;

namespace orvista {

struct CommandRow;

/// Tools > Upload to Several Displays…: saves first, as Upload does, then hands the work to `orvista`, which
/// lies beside the program.
class SeveralDisplays final {
public:
    /// Both must outlive the command.
    SeveralDisplays(DocMgrModule::ProjectLifecycle& lifecycle, QWidget& window)
        : lifecycle_(lifecycle), window_(window) {}

    CommandRow toolsEntry();

private:
    void miToolsSeveral_Click();

    DocMgrModule::ProjectLifecycle& lifecycle_;
    QWidget& window_;
};

} // namespace orvista
