#pragma once

#include "model/FileStamp.h"
#include "model/ProjectLifecycle.h"

#include <QObject>

#include <functional>
#include <string>

class QWidget;

namespace orvista {

class PanelDock;

/// Offers to read the project again when its file is no longer the one that was read or written: somebody
/// else has saved it. It says so once for each state of the file, and asks before changes are lost.
class ReloadOffer final : public QObject {
    Q_OBJECT
public:
    /// What it asks of the main window.
    struct Surroundings {
        QWidget& window; ///< its questions belong to it
        PanelDock& dock;
        std::function<bool()> hasUnappliedEdits;
        std::function<void(const ChosenProject& onDisk)> compare;
    };
    /// All must outlive the offer.
    ReloadOffer(DocMgrModule::ProjectLifecycle& lifecycle, Surroundings surroundings);

    void follow(ProjectTransition transition);
    /// Asks the disk; does nothing while there is no file of the project, or a modal dialog is open.
    void look();
    /// The file of that path is the project's own, and somebody else has written it since.
    bool isOverwriting(const std::string& path) const;

private:
    /// How the project's file is on the disk.
    std::optional<FileStamp> onDisk() const;
    std::string path() const;
    void showNotice();
    QString shownFile() const;
    void reload();
    void readAgain();

    DocMgrModule::ProjectLifecycle& lifecycle_;
    Surroundings around_;
    bool hasFile_ = false; ///< the project was read from its file or written to it
    std::optional<FileStamp> known_;
    std::optional<FileStamp> told_; ///< as of which the line speaks, or spoke
};

} // namespace orvista
