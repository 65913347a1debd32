#include "mainwindow/ProjectTrees.h"

#include "model/ItemKind.h"

namespace orvista::ProjectTrees {

namespace {

/// A group with a child for each item of a kind.
struct Group {
    const char* key;
    const char* text;
    const ItemKind& kind;
};

void addGroup(ItemTree& tree, const Group& group) {
    QTreeWidgetItem* const node =
        tree.addNode(nullptr, QString::fromLatin1(group.key), QString::fromLatin1(group.text));
    for (std::size_t index = 0; index < group.kind.count; ++index)
        tree.addNode(node, QString::fromStdString(group.kind.key(index)),
                     QString::fromStdString(group.kind.treeName(index)));
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
    addGroup(trvMsg, {"REGULAR", "Regular Message", regularMessages});
    addGroup(trvMsg, {"EMERGENCY", "Emergency Message", emergencyMessages});
}

void fillVariableTree(ItemTree& trvVar) {
    addGroup(trvVar, {"REGISTER", "Register (Float)", floatVariables});
    addGroup(trvVar, {"COIL", "Coil (Boolean)", booleanVariables});
}

} // namespace orvista::ProjectTrees
