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

FolderList::FolderList(const PathRules& rules, QWidget* parent) : QTreeWidget(parent), rules_(rules) {
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
        QTreeWidgetItem* open = nullptr;
        for (const std::string& step : foldersDownTo(rules_, folder)) {
            const auto split = rules_.split(step);
            open = addFolder(open, step, split && !split->name.empty() ? split->name : step);
            open->setIcon(0, style()->standardIcon(QStyle::SP_DirOpenIcon));
        }
        if (open) {
            const std::string path = pathOf(open);
            for (const std::string& name : subfolders(path))
                addFolder(open, rules_.join(path, name), name);
        }
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

QTreeWidgetItem* FolderList::addFolder(QTreeWidgetItem* parent, const std::string& folder,
                                       const std::string& name) {
    auto* item = parent ? new QTreeWidgetItem(parent) : new QTreeWidgetItem(this);
    item->setText(0, shownPath(name));
    item->setData(0, pathRole, shownPath(folder));
    item->setToolTip(0, shownPath(folder));
    item->setIcon(0, style()->standardIcon(QStyle::SP_DirIcon));
    return item;
}

} // namespace orvista
