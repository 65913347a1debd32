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
class PanelDock;

namespace DocMgrModule {
class ProjectLifecycle;
}

/// Unsaved work: the copy that is kept of it, and the way back from one that an ended editor left.
class Recovery final : public QObject {
    Q_OBJECT
public:
    struct Surroundings {
        Messages& messages;
        Navigator& navigator;
        PanelDock& dock;
        QWidget& window;
    };
    /// \param pages all that show items, in the order in which their texts are put back
    Recovery(DocMgrModule::ProjectLifecycle& lifecycle, const Surroundings& surroundings,
             std::vector<ItemPage*> pages, const RecoverySettings& settings);

    RecoveryKeeper& keeper() { return *keeper_; }
    /// Tools > Restore Unsaved Work…
    void miToolsRestore_Click();

private:
    void tellOnce(bool dockShown);
    void tellNotKept(const QString& folder);
    std::vector<frmRestore::Row> rowsOf(const std::vector<RecoveryFolder::Copy>& copies) const;
    frmRestore::Row rowOf(const RecoveryFolder::Copy& copy) const;
    bool remove(std::vector<RecoveryFolder::Copy>& copies, std::size_t row);
    void open(const QString& path);

    DocMgrModule::ProjectLifecycle& lifecycle_;
    Surroundings around_;
    std::vector<ItemPage*> pages_;
    bool hasTold_ = false;
    bool hasToldNotKept_ = false;
    RecoveryKeeper* keeper_;
};

} // namespace orvista
