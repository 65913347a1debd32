#include "mainwindow/FileTools.h"

#include "mainwindow/FileDrops.h"
#include "mainwindow/Guard.h"
#include "mainwindow/ReloadOffer.h"
#include "model/Text.h"
#include "widgets/ModalDialogs.h"
#include "widgets/PathText.h"

#include <QAction>
#include <QWidget>

namespace orvista {

namespace {

bool isProject(const std::string& path) {
    return endsWithIgnoringCase(path, DocMgrModule::projectExtension);
}

} // namespace

FileTools::FileTools(DocMgrModule::ProjectLifecycle& lifecycle, ProjectChanges& changes,
                     const Commands& commands, PanelDock& dock, QWidget& window)
    : QObject(&window),
      lifecycle_(lifecycle),
      commands_(commands),
      sheets_(new SheetTools(lifecycle, changes, dock, window)),
      reload_(new ReloadOffer(lifecycle, dock, this)) {
    connect(sheets_, &SheetTools::itemsCameFrom, this, &FileTools::itemsCameFrom);
    auto* const drops = new FileDrops(window, [this](const QString& path) { return takesFile(path); });
    connect(drops, &FileDrops::dropped, this, &FileTools::take);
}

void FileTools::follow(ProjectTransition transition) {
    reload_->follow(transition);
}

void FileTools::windowActivated() {
    reload_->look();
}

bool FileTools::takesFile(const QString& path) const {
    return isProject(pathFromShown(path)) || (path.endsWith(QLatin1String(".csv"), Qt::CaseInsensitive) &&
                                              commands_.action("miToolsImportMessages").isEnabled());
}

void FileTools::take(const QString& path) {
    if (!takesFile(path) || isModalDialogOpen())
        return;
    runGuarded(lifecycle_.fileContext().messages, [this, file = pathFromShown(path)] {
        if (isProject(file))
            lifecycle_.openGivenProject(file);
        else
            sheets_->importAny(file);
    });
}

} // namespace orvista
