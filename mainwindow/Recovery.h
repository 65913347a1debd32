#pragma once

#include "mainwindow/RecoveryKeeper.h"
#include "mainwindow/frmRestore.h"

#include <QObject>

#include <vector>

class QWidget;

namespace orvista {

class ItemPage;
class Messages;
class Navigator;
struct CommandRow;

namespace DocMgrModule {
class ProjectLifecycle;
}

/// Unsaved work: the copy that is kept of it, and the way back from one that an ended editor left.
class Recovery final : public QObject {
    Q_OBJECT
public:
    /// \param pages all that show items, in the order in which their texts are put back
    Recovery(DocMgrModule::ProjectLifecycle& lifecycle, Messages& messages, std::vector<ItemPage*> pages,
             const RecoverySettings& settings, QWidget& window);

    RecoveryKeeper& keeper() { return *keeper_; }
    /// Tools > Restore Unsaved Work…
    CommandRow restoreCommand(Navigator& navigator);

private:
    void miToolsRestore_Click(Navigator& navigator);
    std::vector<frmRestore::Row> rowsOf(const std::vector<RecoveryFolder::Copy>& copies) const;
    frmRestore::Row rowOf(const RecoveryFolder::Copy& copy) const;
    void open(const QString& path, Navigator& navigator);

    DocMgrModule::ProjectLifecycle& lifecycle_;
    Messages& messages_;
    std::vector<ItemPage*> pages_;
    QWidget& window_;
    RecoveryKeeper* keeper_;
};

} // namespace orvista
