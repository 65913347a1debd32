#include "mainwindow/ItemTree.h"
#include "tests/support/EditorFixture.h"

#include <QSignalSpy>
#include <QTabWidget>

using namespace orvista;
using namespace orvista::testing;

namespace {

QStringList described(const QTreeWidgetItem& node) {
    QStringList rows{nodeKey(node) + u'=' + node.text(0)};
    for (int i = 0; i < node.childCount(); ++i)
        rows << u'>' + nodeKey(*node.child(i)) + u'=' + node.child(i)->text(0);
    return rows;
}

QStringList described(const ItemTree& tree) {
    QStringList rows;
    for (int i = 0; i < tree.topLevelItemCount(); ++i)
        rows << described(*tree.topLevelItem(i));
    return rows;
}

QStringList group(const QString& head, const QString& key, const QString& text, int count) {
    QStringList rows{head};
    for (int n = 1; n <= count; ++n)
        rows << QStringLiteral(">%1%3=%2%3").arg(key, text).arg(n);
    return rows;
}

QPoint centre(const ItemTree& tree, const QTreeWidgetItem* node) {
    return tree.visualItemRect(node).center();
}

} // namespace

class NavigationTest : public QObject {
    Q_OBJECT
private slots:
    void treesHoldTheirNodes();
    void pagesStandInOrder();
    void nodesShowTheirPages();
    void theRootNodeChangesNothing();
    void optionEntriesShowTheirPages();
    void theTreePointsAtTheShownPage();
    void movingByKeyboardIsAClick();
    void oneActionFiresOnce();
    void aClickOnTheCurrentNodeFiresAgain();
    void anExpanderIsNoClick();
    void aDragEndsOnTheNodeThatIsShown();
};

void NavigationTest::treesHoldTheirNodes() {
    EditorFixture editor;
    editor.load();
    QCOMPARE(described(*editor.find<ItemTree>("trvSystem")),
             (QStringList{"ROOT=Orvista", ">C1=System", ">C2=Modbus Setting", ">C3=Variable List",
                          ">C4=Message List", ">C5=Orvista Test"}));
    QCOMPARE(described(*editor.find<ItemTree>("trvVar")),
             group("REGISTER=Register (Float)", "F", "RegVar", 64) +
                 group("COIL=Coil (Boolean)", "B", "CoilVar", 32));
    QCOMPARE(described(*editor.find<ItemTree>("trvMsg")),
             group("REGULAR=Regular Message", "R", "Regular", 40) +
                 group("EMERGENCY=Emergency Message", "E", "Emergency", 20));
}

void NavigationTest::pagesStandInOrder() {
    EditorFixture editor;
    editor.load();
    const auto* const tabs = editor.find<QTabWidget>("tabDetails");
    QStringList names;
    for (int page = 0; page < tabs->count(); ++page)
        names << tabs->tabText(page);
    QCOMPARE(names, (QStringList{"System", "Modbus Setting", "Variable List", "Message List", "TCP Tester"}));
}

void NavigationTest::nodesShowTheirPages() {
    EditorFixture editor;
    editor.startWithNewProject();
    const auto* const tabs = editor.find<QTabWidget>("tabDetails");
    for (const int page : {4, 2, 0, 3, 1}) {
        editor.showPage(QByteArray("C" + QByteArray::number(page + 1)).constData());
        QCOMPARE(tabs->currentIndex(), page);
    }
}

void NavigationTest::theRootNodeChangesNothing() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.showPage("C3");
    editor.showPage("ROOT");
    QCOMPARE(editor.find<QTabWidget>("tabDetails")->currentIndex(), 2);
}

void NavigationTest::optionEntriesShowTheirPages() {
    EditorFixture editor;
    editor.startWithNewProject();
    const auto* const tabs = editor.find<QTabWidget>("tabDetails");
    editor.trigger("miOptionMsgLst");
    QCOMPARE(tabs->currentIndex(), 3);
    editor.trigger("miVarLst");
    QCOMPARE(tabs->currentIndex(), 2);
    editor.trigger("miOptionModbusSetting");
    QCOMPARE(tabs->currentIndex(), 1);
    editor.trigger("miOptionSystemCfg");
    QCOMPARE(tabs->currentIndex(), 0);
}

void NavigationTest::theTreePointsAtTheShownPage() {
    EditorFixture editor;
    editor.startWithNewProject();
    auto* const tree = editor.find<ItemTree>("trvSystem");
    const QSignalSpy clicks(tree, &ItemTree::NodeClick);
    QCOMPARE(nodeKey(*tree->currentItem()), QStringLiteral("C1"));
    editor.trigger("miVarLst");
    QCOMPARE(nodeKey(*tree->currentItem()), QStringLiteral("C3"));
    QCOMPARE(clicks.count(), 0);
    QTest::keyClick(tree, Qt::Key_Down);
    QCOMPARE(editor.find<QTabWidget>("tabDetails")->currentIndex(), 3);
    QCOMPARE(clicks.count(), 1);
}

void NavigationTest::movingByKeyboardIsAClick() {
    EditorFixture editor;
    editor.startWithNewProject();
    auto* const tree = editor.find<ItemTree>("trvSystem");
    const auto* const tabs = editor.find<QTabWidget>("tabDetails");
    editor.showPage("C1");
    tree->setFocus();
    QTest::keyClick(tree, Qt::Key_Down);
    QCOMPARE(tabs->currentIndex(), 1);
    QTest::keyClick(tree, Qt::Key_End);
    QCOMPARE(tabs->currentIndex(), 4);
    QTest::keyClick(tree, Qt::Key_Up);
    QCOMPARE(tabs->currentIndex(), 3);
    QTest::keyClick(tree, 'S'); // by the first letter of its text
    QCOMPARE(tabs->currentIndex(), 0);
}

void NavigationTest::oneActionFiresOnce() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.showPage("C3");
    auto* const tree = editor.find<ItemTree>("trvVar");
    const QSignalSpy clicks(tree, &ItemTree::NodeClick);
    editor.clickNode("trvVar", "F2");
    QCOMPARE(clicks.count(), 1);
    QTest::keyClick(tree, Qt::Key_Down);
    QCOMPARE(clicks.count(), 2);
    QTest::mouseClick(tree->viewport(), Qt::RightButton, {}, centre(*tree, editor.node(*tree, "F4")));
    QCOMPARE(clicks.count(), 3);
    QCOMPARE(editor.text("txtVarName"), QStringLiteral("RegVar4"));
    // Keys that move nothing, and the empty area, are not clicks.
    QTest::keyClick(tree, Qt::Key_Control);
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, {},
                      {tree->viewport()->width() - 2, tree->viewport()->height() + 100});
    QCOMPARE(clicks.count(), 3);
}

void NavigationTest::aClickOnTheCurrentNodeFiresAgain() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.showPage("C3");
    auto* const tree = editor.find<ItemTree>("trvVar");
    const QSignalSpy clicks(tree, &ItemTree::NodeClick);
    editor.clickNode("trvVar", "F2");
    editor.clickNode("trvVar", "F2");
    QCOMPARE(clicks.count(), 2);
    QTest::keyClick(tree, Qt::Key_Return);
    QCOMPARE(clicks.count(), 3);
}

void NavigationTest::anExpanderIsNoClick() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.showVariable("F2");
    auto* const tree = editor.find<ItemTree>("trvVar");
    const QSignalSpy clicks(tree, &ItemTree::NodeClick);
    QTreeWidgetItem* const registers = editor.node(*tree, "REGISTER");
    const QRect row = tree->visualItemRect(registers);
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, {},
                      {row.left() - tree->indentation() / 2, row.center().y()});
    QVERIFY(!registers->isExpanded());
    QCOMPARE(clicks.count(), 0);
    QCOMPARE(editor.text("txtVarName"), QStringLiteral("RegVar2"));
}

void NavigationTest::aDragEndsOnTheNodeThatIsShown() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.showPage("C3");
    auto* const tree = editor.find<ItemTree>("trvVar");
    const QSignalSpy clicks(tree, &ItemTree::NodeClick);
    QTest::mousePress(tree->viewport(), Qt::LeftButton, {}, centre(*tree, editor.node(*tree, "F2")));
    QTest::mouseMove(tree->viewport(), centre(*tree, editor.node(*tree, "F6")));
    QTest::mouseRelease(tree->viewport(), Qt::LeftButton, {}, centre(*tree, editor.node(*tree, "F6")));
    QCOMPARE(clicks.count(), 1);
    QCOMPARE(editor.text("txtVarName"), tree->currentItem()->text(0));
}

QTEST_MAIN(NavigationTest)
#include "NavigationTest.moc"
