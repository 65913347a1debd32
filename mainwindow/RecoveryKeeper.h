#pragma once

#include "mainwindow/RecoveryFolder.h"
#include "mainwindow/RecoverySettings.h"
#include "model/CommandEnabling.h"
#include "model/Project.h"

#include <QObject>

#include <string>
#include <vector>

namespace orvista {

class ItemPage;
class QuietTimer;

/// Keeps a copy of what is not saved: the project in memory, and what its pages show without having applied
/// it. There is a copy while there is something to lose.
class RecoveryKeeper final : public QObject {
    Q_OBJECT
public:
    /// \param pages all that show items; they must outlive the keeper
    RecoveryKeeper(const Project& project, std::vector<const ItemPage*> pages,
                   const RecoverySettings& settings, QObject* parent);

    RecoveryFolder& folder() { return folder_; }

    /// The project, or a text on a page, may be another.
    void noteChange();
    /// Does at once what a change has left to do.
    void keepNow();
    void follow(ProjectTransition transition);
    /// The user does not want the work.
    void discard();

signals:
    /// The copy that was due could not be written.
    void failed();

private:
    void keep();

    const Project& project_;
    std::vector<const ItemPage*> pages_;
    RecoveryFolder folder_;
    QuietTimer* delay_;
    std::string kept_; ///< the copy's bytes; empty when there is none
};

} // namespace orvista
