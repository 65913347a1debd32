#include "mainwindow/ItemTree.h"

#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QStyle>
#include <QToolTip>
#include <QTreeWidgetItemIterator>

namespace orvista {

namespace {

/// Of a node, in average characters: "Emergency Message".
constexpr int longestItemName = 18;
/// "Regular 12".
constexpr int leastOfName = 10;

QTreeWidgetItem* treeItem(const ItemTree::Node& node) {
    auto* const item = new QTreeWidgetItem({node.text});
    item->setData(0, Qt::UserRole, node.key);
    return item;
}

} // namespace

ItemTree::ItemTree(QWidget* parent) : QTreeWidget(parent) {
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setColumnCount(1);
    // The view itself tells presses on a node from those on an expander or the empty area.
    connect(this, &QTreeWidget::itemPressed, this, [this] { pressedOnNode_ = true; });
}

void ItemTree::addGroup(const Node& group, const std::vector<Node>& nodes) {
    // The view would take note of each node and each of its texts, if they came to it one by one.
    QTreeWidgetItem* const top = treeItem(group);
    for (const Node& node : nodes)
        top->addChild(treeItem(node));
    addTopLevelItem(top);
    top->setExpanded(true);
}

void ItemTree::click(const QString& key) {
    for (QTreeWidgetItemIterator node(this); *node; ++node) {
        if (nodeKey(**node) != key)
            continue;
        setCurrentItem(*node);
        scrollToItem(*node);
        fireNodeClick();
        return;
    }
}

int ItemTree::widthFor(int characters) const {
    const int names = characters * fontMetrics().averageCharWidth() + 2 * indentation();
    return names + style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this) + 2 * frameWidth();
}

QSize ItemTree::sizeHint() const {
    return {widthFor(longestItemName), QTreeWidget::sizeHint().height()};
}

QSize ItemTree::minimumSizeHint() const {
    return {widthFor(leastOfName), QTreeWidget::minimumSizeHint().height()};
}

bool ItemTree::viewportEvent(QEvent* event) {
    if (event->type() != QEvent::ToolTip || !toolTipOf_)
        return QTreeWidget::viewportEvent(event);
    const auto* const help = static_cast<QHelpEvent*>(event);
    const QTreeWidgetItem* const node = itemAt(help->pos());
    QToolTip::showText(help->globalPos(), node ? toolTipOf_(nodeKey(*node)) : QString(), viewport());
    return true;
}

void ItemTree::mousePressEvent(QMouseEvent* event) {
    pressedOnNode_ = false;
    QTreeWidget::mousePressEvent(event);
}

void ItemTree::mouseReleaseEvent(QMouseEvent* event) {
    QTreeWidget::mouseReleaseEvent(event);
    // The current node counts, not the one under the mouse: the press may have been dragged on.
    if (pressedOnNode_)
        fireNodeClick();
    pressedOnNode_ = false;
}

void ItemTree::keyPressEvent(QKeyEvent* event) {
    const QTreeWidgetItem* const before = currentItem();
    QTreeWidget::keyPressEvent(event);
    const bool chosen = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (chosen || currentItem() != before)
        fireNodeClick();
}

void ItemTree::fireNodeClick() {
    if (QTreeWidgetItem* const node = currentItem())
        emit NodeClick(node);
}

QString nodeKey(const QTreeWidgetItem& node) {
    return node.data(0, Qt::UserRole).toString();
}

} // namespace orvista
