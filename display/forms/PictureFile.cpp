#include "display/forms/PictureFile.h"

#include "widgets/PanelPicture.h"
#include "widgets/PathText.h"

#include <QDir>
#include <QFileDialog>
#include <QSaveFile>

namespace orvista {

namespace {

/// Side of a lens' square, in pixels.
constexpr int pictureCell = 8;

QString chosenFile(const Project& project, QWidget* parent) {
    const QString folder = project.ProjPath.empty() ? QDir::homePath() : shownPath(project.ProjPath);
    QFileDialog comdlg(parent, QObject::tr("Save picture"), folder, QObject::tr("Picture (*.png)"));
    comdlg.setObjectName(QStringLiteral("comdlg"));
    comdlg.setAcceptMode(QFileDialog::AcceptSave);
    comdlg.setFileMode(QFileDialog::AnyFile);
    comdlg.setDefaultSuffix(QStringLiteral("png"));
    if (comdlg.exec() != QDialog::Accepted || comdlg.selectedFiles().isEmpty())
        return {};
    return comdlg.selectedFiles().constFirst();
}

} // namespace

void saveAsPicture(const LedRaster& raster, const Project& project, Messages& messages, QWidget* parent) {
    const QString path = chosenFile(project, parent);
    if (path.isEmpty())
        return;
    QSaveFile file(path);
    const bool isSaved = file.open(QIODevice::WriteOnly) &&
                         PanelPicture(raster.size(), pictureCell).image(raster).save(&file, "PNG") &&
                         file.commit();
    if (!isSaved)
        messages.show(MessageIcon::Exclamation, "unable to save " + path.toStdString());
}

} // namespace orvista
