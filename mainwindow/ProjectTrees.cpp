#include "mainwindow/ProjectTrees.h"

#include "model/Item.h"

namespace orvista::ProjectTrees {

namespace {

/// A group with a child for each item of a kind.
struct Group {
    const char* key;
    const char* text;
    Kind kind;
};

void addGroup(ItemTree& tree, const Group& group) {
    QTreeWidgetItem* const node =
        tree.addNode(nullptr, QString::fromLatin1(group.key), QString::fromLatin1(group.text));
    for (std::size_t index = 0; index < rowOf(group.kind).count; ++index)
        tree.addNode(node, QString::fromStdString(keyOf({group.kind, index})),
                     QString::fromStdString(treeNameOf({group.kind, index})));
    node->setExpanded(true);
}

} // namespace

void fillNavigationTree(ItemTree& trvSystem, const std::vector<MainPage>& pages) {
    QTreeWidgetItem* const root =
        trvSystem.addNode(nullptr, QStringLiteral("ROOT"), QStringLiteral("Orvista"));
    for (const MainPage& page : pages)
        trvSystem.addNode(root, QString::fromLatin1(page.nodeKey), QString::fromLatin1(page.nodeText));
    root->setExpanded(true);
}

void fillMessageTree(ItemTree& trvMsg) {
    addGroup(trvMsg, {"REGULAR", "Regular Message", Kind::Regular});
    addGroup(trvMsg, {"EMERGENCY", "Emergency Message", Kind::Emergency});
}

void fillVariableTree(ItemTree& trvVar) {
    addGroup(trvVar, {"REGISTER", "Register (Float)", Kind::Float});
    addGroup(trvVar, {"COIL", "Coil (Boolean)", Kind::Boolean});
}

} // namespace orvista::ProjectTrees
