#pragma once

#include "model/PathRules.h"

#include <QIcon>
#include <QTreeWidget>

#include <string>

namespace orvista {

/// The list of folders in a chooser: the open folder under its parents up to the root, and its subfolders.
/// Double click and Enter open the highlighted folder, Backspace its parent. The highlighted folder is the
/// list's path, so that what is seen is what is chosen. Paths are UTF-8.
class FolderList : public QTreeWidget {
    Q_OBJECT
public:
    explicit FolderList(const PathRules& rules, QWidget* parent = nullptr);

    std::string path() const;
    /// Opens the folder; one that cannot be read shows no subfolders.
    void setPath(const std::string& folder);

    QSize sizeHint() const override;

signals:
    void pathChanged();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    /// Every branch shown is open, so none gets an arrow.
    void drawBranches(QPainter* painter, const QRect& rect, const QModelIndex& index) const override;

private:
    QTreeWidgetItem* addParents(const std::string& folder);
    void addSubfolders(QTreeWidgetItem* open);
    static QTreeWidgetItem* folderItem(const std::string& folder, const std::string& name, const QIcon& icon);

    PathRules rules_;
    QIcon openIcon_; ///< shared by all rows: loading one takes as long as making ten rows
    QIcon closedIcon_;
};

} // namespace orvista
