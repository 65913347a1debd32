#include "check/FolderCheck.h"

namespace orvista {

Findings FolderCheck::check(const Project& project, int columns, Notes notes) {
    const BitmapProvider& images = bitmaps(project);
    return check_.check(project, images, columns, notes);
}

const BitmapProvider& FolderCheck::bitmaps(const Project& project) {
    if (!bitmaps_ || folder_ != project.ProjPath) {
        folder_ = project.ProjPath;
        bitmaps_.emplace(folder_);
        check_ = ProjectCheck(); // it remembers the folder's images
    }
    return *bitmaps_;
}

} // namespace orvista
