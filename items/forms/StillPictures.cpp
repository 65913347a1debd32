#include "items/forms/StillPictures.h"

#include "check/FolderCheck.h"
#include "display/FirstSight.h"
#include "items/MasterBitmaps.h"
#include "model/Item.h"
#include "widgets/RowsTable.h"

#include <QPainter>

namespace orvista {

namespace {

/// A picture is about as wide as this many characters; one of a wide display has a pixel for each dot.
constexpr int widestPictureCharacters = 30;
/// Around a picture, in pixels.
constexpr int margin = 3;

} // namespace

StillPictures::StillPictures(RowsTable& table, const Project& project, FolderCheck& folder,
                             std::function<LocalTime()> localTime, const MasterView* master)
    : QStyledItemDelegate(&table),
      table_(table),
      project_(project),
      folder_(folder),
      master_(master),
      localTime_(std::move(localTime)) {}

void StillPictures::setPanel(PanelSize panel) {
    const double ratio = table_.devicePixelRatioF();
    const int room =
        static_cast<int>(widestPictureCharacters * table_.fontMetrics().averageCharWidth() * ratio);
    panel_.emplace(panel, PanelPicture::cellFor(panel, {room, room}));
    clear();
}

void StillPictures::clear() {
    formats_.reset();
    pictures_.clear();
}

int StillPictures::width() const {
    return static_cast<int>(panel_->size().width() / table_.devicePixelRatioF()) + 2 * margin;
}

int StillPictures::rowHeight() const {
    const int picture = static_cast<int>(panel_->size().height() / table_.devicePixelRatioF());
    return std::max(picture, table_.fontMetrics().lineSpacing()) + 2 * margin;
}

QSize StillPictures::sizeHint(const QStyleOptionViewItem& /*option*/, const QModelIndex& /*index*/) const {
    return {width(), rowHeight()};
}

const QPixmap& StillPictures::picture(int row) const {
    const bool isMaster = master_ != nullptr && master_->isMaster();
    const Project& project = isMaster ? master_->shown() : project_;
    if (!formats_) {
        formats_ = fieldFormats(project);
        values_ = defaultValues(project);
        values_.clock = localTime_();
    }
    QPixmap& kept = pictures_[row];
    if (kept.isNull()) {
        const std::string& script = scriptOf(project, allMessages()[static_cast<std::size_t>(row)]);
        const BitmapProvider& folder = folder_.bitmaps(project);
        const MasterBitmaps ofMaster(folder);
        kept = QPixmap::fromImage(panel_->image(
            firstSight(script, panel_->panel(), *formats_, values_, isMaster ? ofMaster : folder)));
        kept.setDevicePixelRatio(table_.devicePixelRatioF());
    }
    return kept;
}

void StillPictures::paint(QPainter* painter, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const {
    QStyledItemDelegate::paint(painter, option, index); // what shows the selection
    const QPixmap& shown = picture(table_.rowOf(index));
    const QSizeF size = shown.deviceIndependentSize();
    const double y = option.rect.y() + (option.rect.height() - size.height()) / 2;
    painter->drawPixmap(QPointF(option.rect.x() + margin, y), shown);
}

} // namespace orvista
