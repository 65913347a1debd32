#pragma once

#include "model/FileStamp.h"
#include "model/ProjectLifecycle.h"

#include <QObject>

namespace orvista {

class PanelDock;

/// Offers to open the project again when its file is no longer the one that was read or written: somebody
/// else has saved it. It only ever says so, once for each state of the file.
class ReloadOffer final : public QObject {
    Q_OBJECT
public:
    /// Both must outlive the offer.
    ReloadOffer(DocMgrModule::ProjectLifecycle& lifecycle, PanelDock& dock, QObject* parent);

    void follow(ProjectTransition transition);
    /// Asks the disk; does nothing while there is no file of the project, or a modal dialog is open.
    void look();

private:
    /// How the project's file is on the disk.
    std::optional<FileStamp> onDisk() const;
    std::string path() const;
    void say();
    void reload();

    DocMgrModule::ProjectLifecycle& lifecycle_;
    PanelDock& dock_;
    bool hasFile_ = false; ///< the project was read from its file or written to it
    std::optional<FileStamp> known_;
    std::optional<FileStamp> told_; ///< as of which the line speaks, or spoke
};

} // namespace orvista
