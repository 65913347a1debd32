#pragma once

#include <QTest>
#include <QTreeWidget>

/// Clicks on rows of tree and list views where the user would.
namespace orvista::testing {

inline QPoint rowCentre(QTreeWidget& tree, QTreeWidgetItem* row) {
    tree.scrollToItem(row);
    return tree.visualItemRect(row).center();
}

inline void clickRow(QTreeWidget& tree, QTreeWidgetItem* row) {
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, rowCentre(tree, row));
}

inline void doubleClickRow(QTreeWidget& tree, QTreeWidgetItem* row) {
    const QPoint at = rowCentre(tree, row);
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, at);
    QTest::mouseDClick(tree.viewport(), Qt::LeftButton, {}, at);
}

} // namespace orvista::testing
