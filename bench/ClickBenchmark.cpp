#include "bench/Pair.h"
#include "mainwindow/ItemTree.h"
#include "mainwindow/ProjectTrees.h"
#include "tests/support/EditorFixture.h"

#include <QCoreApplication>
#include <QTreeWidgetItemIterator>

/// A click on each of the 96 variables and 60 messages of the real window, each painted, beside the same
/// clicks on trees alone that nothing listens to.
namespace orvista::bench {
namespace {

constexpr int itemCount = 156;

/// Clicks every node below the groups; returns how many those were.
int clickThrough(ItemTree& tree) {
    int clicks = 0;
    for (QTreeWidgetItemIterator node(&tree, QTreeWidgetItemIterator::NoChildren); *node; ++node) {
        tree.scrollToItem(*node);
        QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, tree.visualItemRect(*node).center());
        QCoreApplication::processEvents();
        ++clicks;
    }
    return clicks;
}

void show(QWidget& window) {
    window.show();
    if (!QTest::qWaitForWindowExposed(&window))
        throw std::runtime_error("the window does not show");
}

void ClickThroughAllItems(benchmark::State& state) {
    testing::EditorFixture editor;
    editor.startWithNewProject();
    ItemTree bareVariables;
    ProjectTrees::fillVariableTree(bareVariables);
    bareVariables.expandAll();
    show(bareVariables);
    ItemTree bareMessages;
    ProjectTrees::fillMessageTree(bareMessages);
    bareMessages.expandAll();
    show(bareMessages);

    int clicks = 0;
    runBesideFloor(
        state,
        [&] {
            editor.showPage("C3");
            clicks = clickThrough(*editor.find<ItemTree>("trvVar"));
            editor.showPage("C4");
            clicks += clickThrough(*editor.find<ItemTree>("trvMsg"));
        },
        [&] {
            clickThrough(bareVariables);
            clickThrough(bareMessages);
        });
    if (clicks != itemCount)
        state.SkipWithError("not every item was clicked");
    state.counters["us_per_click"] = state.counters["us"] / itemCount;
}

BENCHMARK(ClickThroughAllItems)->UseManualTime()->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace orvista::bench
