#include "mainwindow/RecoveryKeeper.h"

#include "mainwindow/ItemPage.h"
#include "widgets/QuietTimer.h"

namespace orvista {

RecoveryKeeper::RecoveryKeeper(const Project& project, std::vector<const ItemPage*> pages,
                               const RecoverySettings& settings, QObject* parent)
    : QObject(parent),
      project_(project),
      pages_(std::move(pages)),
      folder_(settings.folder),
      delay_(new QuietTimer(
          settings.delay, [this] { keep(); }, this)) {
    delay_->setObjectName(QStringLiteral("recoveryDelay"));
}

void RecoveryKeeper::noteChange() {
    // The first change counts: who types without a pause is not to lose more for it.
    if (!delay_->isActive())
        delay_->start();
}

void RecoveryKeeper::keepNow() {
    if (delay_->isActive())
        keep();
}

void RecoveryKeeper::keep() {
    delay_->stop();
    std::vector<NotAppliedTexts> notApplied;
    for (const ItemPage* const page : pages_)
        if (page->isNotApplied())
            notApplied.push_back({*page->shownItem(), page->editedTexts()});
    if (!project_.modified && notApplied.empty())
        return discard();
    std::string bytes = recoveryBytes(project_, notApplied);
    if (bytes == kept_)
        return;
    const bool isKept = folder_.write(bytes);
    kept_ = isKept ? std::move(bytes) : std::string();
    if (!isKept)
        emit failed();
}

void RecoveryKeeper::follow(ProjectTransition transition) {
    switch (transition) {
    case ProjectTransition::Reset:
        return discard();
    case ProjectTransition::Saved:
        return keep(); // what is not applied was not saved
    case ProjectTransition::Modified:
    case ProjectTransition::ProjectCommands:
    case ProjectTransition::Opened:
        return noteChange();
    }
}

void RecoveryKeeper::discard() {
    delay_->stop();
    kept_.clear();
    folder_.remove();
}

} // namespace orvista
