#pragma once

#include "display/DisplayValues.h"
#include "display/FieldFormats.h"
#include "display/LedRaster.h"
#include "model/Project.h"
#include "widgets/PanelPicture.h"

#include <QPixmap>
#include <QStyledItemDelegate>

#include <functional>
#include <map>
#include <optional>

namespace orvista {

class FolderCheck;
class MasterView;
class RowsTable;

/// Draws into a table's cells what the display shows of each message first. A row is a message; its picture
/// is made when it comes on the screen.
class StillPictures final : public QStyledItemDelegate {
    Q_OBJECT
public:
    /// \param localTime what fields of time and date show
    /// \param master how the project is looked at; null where it is shown as it is
    StillPictures(RowsTable& table, const Project& project, FolderCheck& folder,
                  std::function<LocalTime()> localTime, const MasterView* master = nullptr);

    void setPanel(PanelSize panel);
    /// The project has changed.
    void clear();
    /// Of a cell, in pixels.
    int width() const;
    int rowHeight() const;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    const QPixmap& picture(int row) const;

    RowsTable& table_;
    const Project& project_;
    FolderCheck& folder_;
    const MasterView* master_;
    std::function<LocalTime()> localTime_;
    std::optional<PanelPicture> panel_;

    // Made when the first picture is.
    mutable std::optional<FieldFormats> formats_;
    mutable DisplayValues values_;
    mutable std::map<int, QPixmap> pictures_; ///< by row
};

} // namespace orvista
