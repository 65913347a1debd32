#include "dialogs/FolderList.h"

#include "dialogs/FolderContents.h"
#include "widgets/PathText.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QSignalBlocker>
#include <QStyle>

namespace orvista {

namespace {

constexpr int pathRole = Qt::UserRole;
constexpr int charactersWide = 52;
constexpr int rowsHigh = 14;
constexpr int indentCharacters = 2;

std::string pathOf(const QTreeWidgetItem* item) {
    return item ? pathFromShown(item->data(0, pathRole).toString()) : std::string();
}

} // namespace

FolderList::FolderList(const PathRules& rules, QWidget* parent)
    : QTreeWidget(parent),
      rules_(rules),
      openIcon_(style()->standardIcon(QStyle::SP_DirOpenIcon)),
      closedIcon_(style()->standardIcon(QStyle::SP_DirIcon)) {
    setHeaderHidden(true);
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setExpandsOnDoubleClick(false);
    setUniformRowHeights(true);
    setTabKeyNavigation(false);
    setIndentation(fontMetrics().averageCharWidth() * indentCharacters);
    setHorizontalScrollMode(ScrollPerPixel);
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    connect(this, &QTreeWidget::currentItemChanged, this, &FolderList::pathChanged);
    connect(this, &QTreeWidget::itemDoubleClicked, this,
            [this](const QTreeWidgetItem* item) { setPath(pathOf(item)); });
}

std::string FolderList::path() const {
    return pathOf(currentItem());
}

void FolderList::setPath(const std::string& folder) {
    {
        const QSignalBlocker oneChangeOnly(this);
        clear();
        QTreeWidgetItem* const open = addParents(folder);
        addSubfolders(open);
        expandAll();
        setCurrentItem(open);
        if (open)
            scrollToItem(open, PositionAtCenter);
    }
    emit pathChanged();
}

QSize FolderList::sizeHint() const {
    return {fontMetrics().averageCharWidth() * charactersWide, fontMetrics().lineSpacing() * rowsHigh};
}

void FolderList::keyPressEvent(QKeyEvent* event) {
    const QTreeWidgetItem* const item = currentItem();
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        setPath(pathOf(item));
    else if (event->key() == Qt::Key_Backspace && item && item->parent())
        setPath(pathOf(item->parent()));
    else
        QTreeWidget::keyPressEvent(event);
}

void FolderList::drawBranches(QPainter* /*painter*/, const QRect& /*rect*/,
                              const QModelIndex& /*index*/) const {}

/// Returns the innermost folder.
QTreeWidgetItem* FolderList::addParents(const std::string& folder) {
    QTreeWidgetItem* open = nullptr;
    for (const std::string& step : foldersDownTo(rules_, folder)) {
        const auto split = rules_.split(step);
        auto* const inner = folderItem(step, split && !split->name.empty() ? split->name : step, openIcon_);
        if (open)
            open->addChild(inner);
        else
            addTopLevelItem(inner);
        open = inner;
    }
    return open;
}

void FolderList::addSubfolders(QTreeWidgetItem* open) {
    if (!open)
        return;
    const std::string path = pathOf(open);
    // Added all at once: the view would lay itself out again for each.
    QList<QTreeWidgetItem*> items;
    for (const std::string& name : subfolders(path))
        items += folderItem(rules_.join(path, name), name, closedIcon_);
    open->addChildren(items);
}

QTreeWidgetItem* FolderList::folderItem(const std::string& folder, const std::string& name,
                                        const QIcon& icon) {
    auto* const item = new QTreeWidgetItem({shownPath(name)});
    const QString path = shownPath(folder);
    item->setData(0, pathRole, path);
    item->setToolTip(0, path);
    item->setIcon(0, icon);
    return item;
}

} // namespace orvista
