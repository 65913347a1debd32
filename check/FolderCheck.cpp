#include "check/FolderCheck.h"

namespace orvista {

Findings FolderCheck::check(const Project& project, int columns, Notes notes) {
    const BitmapProvider& images = bitmaps(project);
    return check_.check(project, images, columns, notes);
}

Findings FolderCheck::check(const MasterView& view, int columns, Notes notes) {
    if (!view.isMaster())
        return check(view.project(), columns, notes);
    const BitmapProvider& images = bitmaps(view.project());
    if (const auto master = view.master(); !masterCheck_ || master_ != master) {
        master_ = master;
        masterCheck_.emplace(*master_, images);
    }
    return view.display() ? masterCheck_->check(view.expansion(), columns, notes)
                          : masterCheck_->checkItself(columns, notes);
}

const BitmapProvider& FolderCheck::bitmaps(const Project& project) {
    if (!bitmaps_ || folder_ != project.ProjPath) {
        folder_ = project.ProjPath;
        bitmaps_.emplace(folder_);
        check_ = ProjectCheck(); // they remember the folder's images
        masterCheck_.reset();
    }
    return *bitmaps_;
}

} // namespace orvista
