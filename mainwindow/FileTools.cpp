#include "mainwindow/FileTools.h"

#include "mainwindow/FileDrops.h"
#include "mainwindow/Guard.h"
#include "mainwindow/ReloadOffer.h"
#include "model/Text.h"
#include "widgets/ModalDialogs.h"
#include "widgets/PathText.h"

#include <QWidget>

namespace orvista {

FileTools::FileTools(DocMgrModule::ProjectLifecycle& lifecycle, PanelDock& dock, QWidget& window)
    : QObject(&window), lifecycle_(lifecycle), reload_(new ReloadOffer(lifecycle, dock, this)) {
    auto* const drops = new FileDrops(window, [this](const QString& path) { return takesFile(path); });
    connect(drops, &FileDrops::dropped, this, &FileTools::openFile);
}

void FileTools::follow(ProjectTransition transition) {
    reload_->follow(transition);
}

void FileTools::windowActivated() {
    reload_->look();
}

bool FileTools::takesFile(const QString& path) const {
    return endsWithIgnoringCase(pathFromShown(path), DocMgrModule::projectExtension);
}

void FileTools::openFile(const QString& path) {
    if (!takesFile(path) || isModalDialogOpen())
        return;
    runGuarded(lifecycle_.fileContext().messages,
               [this, path] { lifecycle_.openGivenProject(pathFromShown(path)); });
}

} // namespace orvista
