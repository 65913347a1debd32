#include "display/forms/PictureFile.h"

#include "widgets/FileChoice.h"
#include "widgets/PanelPicture.h"
#include "widgets/PathText.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QSaveFile>

namespace orvista {

namespace {

/// Side of a lens' square, in pixels.
constexpr int pictureCell = 8;

QImage pictureOf(const LedRaster& raster) {
    return PanelPicture(raster.size(), pictureCell).image(raster);
}

} // namespace

void saveAsPicture(const LedRaster& raster, const Project& project, Messages& messages, QWidget* parent) {
    const auto chosen = chooseFileToWrite(
        {QObject::tr("Save picture"), {QObject::tr("Picture (*.png)")}, project.ProjPath}, parent);
    if (!chosen)
        return;
    QSaveFile file(shownPath(chosen->path));
    const bool isSaved = file.open(QIODevice::WriteOnly) && pictureOf(raster).save(&file, "PNG") &&
                         file.flush() && file.commit();
    if (!isSaved)
        messages.show(MessageIcon::Exclamation, "unable to save " + chosen->path);
}

void copyAsPicture(const LedRaster& raster) {
    QGuiApplication::clipboard()->setImage(pictureOf(raster));
}

} // namespace orvista
