#include "mainwindow/BitmapOffer.h"

#include "compare/LeftBehindBitmaps.h"
#include "mainwindow/PanelDock.h"
#include "model/Project.h"
#include "widgets/PathText.h"

namespace orvista {

namespace {

/// Of the line in the dock, and of its button.
QString bitmapOffer() {
    return QStringLiteral("CopyBitmaps");
}

} // namespace

BitmapOffer::BitmapOffer(const Project& project, PanelDock& dock, QObject* parent)
    : QObject(parent), project_(project), dock_(dock) {}

void BitmapOffer::offerFrom(const std::string& folder) {
    if (!dock_.offers(bitmapOffer()))
        folders_.clear(); // the user did not want them
    std::erase(folders_, folder);
    folders_.push_back(folder);
    offerLast();
}

void BitmapOffer::offerLast() {
    std::size_t count = 0;
    while (!folders_.empty() && (count = leftBehindBitmaps(project_, folders_.back()).size()) == 0)
        folders_.pop_back();
    if (count == 0)
        return withdraw();
    const std::string folder = folders_.back();
    const QString path = shownPath(folder);
    dock_.offer(
        {bitmapOffer(),
         count == 1
             ? tr("1 bitmap used by the messages is missing here but exists in %1").arg(path)
             : tr("%1 bitmaps used by the messages are missing here but exist in %2").arg(count).arg(path),
         count == 1 ? tr("Copy 1 Bitmap") : tr("Copy %1 Bitmaps").arg(count),
         [this, folder] { copyFrom(folder); }});
}

void BitmapOffer::withdraw() {
    folders_.clear();
    dock_.withdraw(bitmapOffer());
}

void BitmapOffer::copyFrom(const std::string& folder) {
    // Looked up again: some may have been brought along by hand since.
    const auto failed = copyMissingFiles(leftBehindBitmaps(project_, folder), folder, project_.ProjPath);
    std::erase(folders_, folder);
    offerLast();
    emit copied();
    if (!failed.empty())
        dock_.showNotice(tr("%1 cannot be copied").arg(shownPath(failed.front())));
}

} // namespace orvista
