#include "mainwindow/ReloadOffer.h"

#include "dialogs/DialogMessages.h"
#include "mainwindow/Guard.h"
#include "mainwindow/PanelDock.h"
#include "model/FolderLookup.h"
#include "model/SystemPath.h"
#include "widgets/ModalDialogs.h"
#include "widgets/PathText.h"

#include <utility>

namespace orvista {

namespace {

QString lineName() {
    return QStringLiteral("Reload");
}

} // namespace

ReloadOffer::ReloadOffer(DocMgrModule::ProjectLifecycle& lifecycle, Surroundings surroundings)
    : QObject(&surroundings.window), lifecycle_(lifecycle), around_(std::move(surroundings)) {}

std::string ReloadOffer::path() const {
    const Project& project = lifecycle_.project();
    return DocMgrModule::projectFilePath(lifecycle_.environment().paths, project.ProjPath, project.ProjName);
}

std::optional<FileStamp> ReloadOffer::onDisk() const {
    return fileStamp(systemPath(projectFileOnDisk(lifecycle_.environment().paths, path())));
}

void ReloadOffer::follow(ProjectTransition transition) {
    if (transition != ProjectTransition::Reset && transition != ProjectTransition::Saved)
        return;
    around_.dock.withdraw(lineName());
    // The program's start clears the mark of the unnamed project, too.
    hasFile_ = transition == ProjectTransition::Saved && !lifecycle_.project().ProjName.empty();
    known_ = hasFile_ ? onDisk() : std::nullopt;
    told_ = known_;
}

void ReloadOffer::look() {
    if (!hasFile_ || isModalDialogOpen())
        return;
    const auto now = onDisk();
    if (now == told_)
        return;
    told_ = now;
    if (now == known_)
        around_.dock.withdraw(lineName());
    else
        showNotice();
}

QString ReloadOffer::shownFile() const {
    return shownPath(lifecycle_.project().ProjName + std::string(DocMgrModule::projectExtension));
}

void ReloadOffer::showNotice() {
    if (told_)
        around_.dock.offer({lineName(),
                            tr("%1 was changed on the disk since it was read or written").arg(shownFile()),
                            tr("Reload"), [this] { reload(); }});
    else
        // Opening it would only lose the project that is still here.
        around_.dock.offer({lineName(), tr("%1 is no longer on the disk").arg(shownFile()), {}, nullptr});
}

bool ReloadOffer::isOverwriting(const std::string& saved) const {
    if (!hasFile_ || saved != path())
        return false;
    const auto now = onDisk();
    return now && now != known_;
}

void ReloadOffer::reload() {
    const Project& project = lifecycle_.project();
    const bool loses = project.modified || around_.hasUnappliedEdits();
    const ReloadChoice choice = loses ? chooseReload(&around_.window, shownFile()) : ReloadChoice::Discard;
    if (choice == ReloadChoice::Discard)
        readAgain();
    if (choice == ReloadChoice::Compare)
        around_.compare({project.ProjPath, project.ProjName});
    // It stands until the file was read, or the user takes it away.
    if (hasFile_ && told_ != known_)
        showNotice();
}

void ReloadOffer::readAgain() {
    runGuarded(lifecycle_.fileContext().messages, [this] { lifecycle_.ReloadCommand(); });
}

} // namespace orvista
