#pragma once

#include <QTreeWidget>

#include <functional>
#include <utility>
#include <vector>

namespace orvista {

/// A tree of named items. One user action on a node, with any mouse button or by keyboard, fires NodeClick
/// once, also on the node that is current already (Enter on it counts as a click).
class ItemTree final : public QTreeWidget {
    Q_OBJECT
public:
    explicit ItemTree(QWidget* parent = nullptr);

    struct Node {
        QString key; ///< kept in Qt::UserRole
        QString text;
    };
    /// Adds a group at the top, expanded.
    void addGroup(const Node& group, const std::vector<Node>& nodes);

    /// What the tool-tip of a key's node is when it is asked for, as markup; empty for none.
    void explain(std::function<QString(const QString& key)> toolTipOf) { toolTipOf_ = std::move(toolTipOf); }

    /// Shows and fires the node of that key as if it had been clicked; does nothing without such a node.
    void click(const QString& key);

    /// As wide as its names, which leaves the rest to what stands beside it.
    QSize sizeHint() const override;
    /// Wide enough to tell its names apart.
    QSize minimumSizeHint() const override;

signals:
    void NodeClick(QTreeWidgetItem* node);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool viewportEvent(QEvent* event) override;

private:
    int widthFor(int characters) const;
    void fireNodeClick();

    bool pressedOnNode_ = false;
    std::function<QString(const QString&)> toolTipOf_;
};

/// The key of a node made by addGroup.
QString nodeKey(const QTreeWidgetItem& node);

} // namespace orvista
