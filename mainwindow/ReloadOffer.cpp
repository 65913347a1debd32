#include "mainwindow/ReloadOffer.h"

#include "mainwindow/Guard.h"
#include "mainwindow/PanelDock.h"
#include "model/FolderLookup.h"
#include "model/SystemPath.h"
#include "widgets/ModalDialogs.h"
#include "widgets/PathText.h"

namespace orvista {

namespace {

QString lineName() {
    return QStringLiteral("Reload");
}

} // namespace

ReloadOffer::ReloadOffer(DocMgrModule::ProjectLifecycle& lifecycle, PanelDock& dock, QObject* parent)
    : QObject(parent), lifecycle_(lifecycle), dock_(dock) {}

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
    dock_.withdraw(lineName());
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
        dock_.withdraw(lineName());
    else
        say();
}

void ReloadOffer::say() {
    const QString file =
        shownPath(lifecycle_.project().ProjName + std::string(DocMgrModule::projectExtension));
    if (told_)
        dock_.offer({lineName(), tr("%1 was changed on the disk since it was read or written").arg(file),
                     tr("Reload"), [this] { reload(); }});
    else
        // Opening it would only lose the project that is still here.
        dock_.offer({lineName(), tr("%1 is no longer on the disk").arg(file), {}, nullptr});
}

void ReloadOffer::reload() {
    runGuarded(lifecycle_.fileContext().messages, [this] { lifecycle_.openGivenProject(path()); });
}

} // namespace orvista
