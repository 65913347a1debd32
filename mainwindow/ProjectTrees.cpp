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
    std::vector<ItemTree::Node> nodes;
    for (std::size_t index = 0; index < rowOf(group.kind).count; ++index)
        nodes.push_back({QString::fromStdString(keyOf({group.kind, index})),
                         QString::fromStdString(treeNameOf({group.kind, index}))});
    tree.addGroup({QString::fromLatin1(group.key), QString::fromLatin1(group.text)}, nodes);
}

} // namespace

void fillNavigationTree(ItemTree& trvSystem, const std::vector<MainPage>& pages) {
    std::vector<ItemTree::Node> nodes;
    for (const MainPage& page : pages)
        nodes.push_back({QString::fromLatin1(page.nodeKey), QString::fromLatin1(page.nodeText)});
    trvSystem.addGroup({QStringLiteral("ROOT"), QStringLiteral("Orvista")}, nodes);
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
