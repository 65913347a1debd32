#include "tools/tour/Hands.h"

#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QTest>
#include <QToolBar>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

namespace orvista::tour {

namespace {

bool isNode(const QTreeWidgetItem& node, const QString& key) {
    return node.data(0, Qt::UserRole).toString() == key || node.text(0) == key;
}

} // namespace

QWidget& Hands::usable(const QString& name) const {
    auto& widget = find<QWidget>(name);
    if (!widget.isEnabled() || !widget.isVisible())
        throw std::logic_error(name.toStdString() + " takes no input");
    return widget;
}

void Hands::click(const QString& buttonName) const {
    auto& button = usable(buttonName);
    const auto* const withText = qobject_cast<QAbstractButton*>(&button);
    // A check box or option button takes a click on its mark, whatever room its text leaves after it.
    const QPoint where =
        withText && withText->isCheckable() ? QPoint(10, button.height() / 2) : button.rect().center();
    QTest::mouseClick(&button, Qt::LeftButton, {}, where);
}

void Hands::clickTool(const QString& key) const {
    auto* const tool = find<QToolBar>({}).findChild<QAction*>(key);
    if (!tool || !tool->isEnabled())
        throw std::logic_error("the tool " + key.toStdString() + " cannot be used");
    QTest::mouseClick(find<QToolBar>({}).widgetForAction(tool), Qt::LeftButton);
}

void Hands::type(const QString& boxName, const QString& text) const {
    auto& box = usable(boxName);
    QTest::mouseClick(&box, Qt::LeftButton);
    QTest::keySequence(&box, QKeySequence::SelectAll);
    QTest::keyClicks(&box, text);
}

void Hands::typeLines(const QString& boxName, const QStringList& lines) const {
    type(boxName, lines.front());
    auto& box = usable(boxName);
    for (const QString& line : lines.sliced(1)) {
        QTest::keyClick(&box, Qt::Key_Return);
        QTest::keyClicks(&box, line);
    }
}

void Hands::acceptFile() const {
    const auto* const box = window_.findChild<QDialogButtonBox*>();
    for (QAbstractButton* const button : box->buttons())
        if (box->buttonRole(button) == QDialogButtonBox::AcceptRole &&
            QTest::qWaitFor([button] { return button->isEnabled(); }))
            QTest::mouseClick(button, Qt::LeftButton);
}

void Hands::pick(const QString& listName, const QString& item) const {
    auto& list = dynamic_cast<QComboBox&>(usable(listName));
    list.setFocus();
    QTest::keyClick(&list, Qt::Key_Home);
    for (int step = 0; step < list.count() && list.currentText() != item; ++step)
        QTest::keyClick(&list, Qt::Key_Down);
    if (list.currentText() != item)
        throw std::logic_error(listName.toStdString() + " has no " + item.toStdString());
}

void Hands::clickNode(const QString& treeName, const QString& key) const {
    auto& tree = dynamic_cast<QTreeWidget&>(usable(treeName));
    for (QTreeWidgetItemIterator node(&tree); *node; ++node) {
        if (!isNode(**node, key))
            continue;
        tree.scrollToItem(*node);
        // Its name may be cut on a small screen.
        const QRect shown = tree.visualItemRect(*node).intersected(tree.viewport()->rect());
        QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, shown.center());
        return;
    }
    throw std::logic_error(treeName.toStdString() + " has no " + key.toStdString());
}

void Hands::press(const QKeySequence& keys) const {
    window_.activateWindow();
    if (!QTest::qWaitForWindowActive(&window_))
        throw std::logic_error("the window takes no keys");
    QTest::keySequence(&window_, keys);
}

QString Hands::text(const QString& boxName) const {
    return find<QLineEdit>(boxName).text();
}

} // namespace orvista::tour
